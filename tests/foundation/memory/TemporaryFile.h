#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <unistd.h>

// A unique file path in the test's temporary folder, removed again when the object goes. Its
// contents are written and read with the standard library, independently of the code under test.
class TemporaryFile
{
public:
    TemporaryFile()
    {
        std::string pattern = testing::TempDir() + "q1-test-XXXXXX";
        const int descriptor = mkstemp(pattern.data());
        if (descriptor >= 0)
            close(descriptor);
        path = pattern;
        std::remove(path.c_str());
    }

    ~TemporaryFile() { std::remove(path.c_str()); }

    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const char* getPath() const { return path.c_str(); }

    void write(const std::string& bytes) const
    {
        std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
    }

    std::string read() const
    {
        std::ifstream file(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }

    bool exists() const { return access(path.c_str(), F_OK) == 0; }

private:
    std::string path;
};
