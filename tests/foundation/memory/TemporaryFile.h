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
    TemporaryFile() : path(testing::TempDir() + "q1-test-" + std::to_string(getpid()) + "-" + std::to_string(++made))
    {
        std::remove(path.c_str());
    }
    ~TemporaryFile() { std::remove(path.c_str()); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const char* getPath() const { return path.c_str(); }
    void write(const std::string& bytes) const { std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes; }
    bool exists() const { return access(path.c_str(), F_OK) == 0; }
    std::string read() const
    {
        std::ifstream file(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }

private:
    static inline int made = 0;
    const std::string path;
};
