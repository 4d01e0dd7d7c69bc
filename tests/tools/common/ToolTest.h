#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

// Ground of the command-line programs' tests: a fresh folder per test in the build tree, whole
// files, and runs of a built program in a process of its own with its output and exit status.
class ToolTest : public ::testing::Test
{
public:
    struct Run
    {
        int status = -1;  // exit status, -1 when the program did not exit normally
        std::string out;
        std::string err;
    };

protected:
    // `program`: the path of the program that run() starts; empty for tests that start none.
    explicit ToolTest(std::string program = {}) : program(std::move(program)) {}

    // Makes `folder`, named after the test, fresh and empty.
    void SetUp() override;

    // A path in the test's folder (an absolute `name` stays as it is).
    std::string path(const std::string& name) const { return (folder / name).string(); }
    // Writes `bytes` to `name`, making the folders on its way.
    void write(const std::string& name, const std::string& bytes) const;
    // The whole file; empty when it cannot be read.
    std::string read(const std::string& name) const;
    // The names in the test's folder with their bytes ("(a folder)" for a folder): what a run left
    // behind, or what a run that must write nothing is checked against.
    std::map<std::string, std::string> contents() const;

    // Runs the program with `arguments` in the test's folder; `environment` entries
    // ("NAME=value") replace or add to this process's. Its output goes to files beside the
    // folder, so files() sees only the program's own work.
    Run run(const std::vector<std::string>& arguments, const std::vector<std::string>& environment = {}) const;
    // A refusal: `status`, one line on standard error that starts with the program's name and
    // contains `text`, and nothing on standard output.
    void expectFailure(const Run& run, int status, const std::string& text) const;

    std::string program;
    std::filesystem::path folder;
};
