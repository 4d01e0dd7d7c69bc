#include "ToolTest.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <iterator>

void ToolTest::SetUp()
{
    const ::testing::TestInfo* test = ::testing::UnitTest::GetInstance()->current_test_info();
    folder = std::filesystem::path(TOOL_TEST_WORK_FOLDER) / (std::string(test->test_suite_name()) + "." + test->name());
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
}

void ToolTest::write(const std::string& name, const std::string& bytes) const
{
    std::filesystem::create_directories(std::filesystem::path(path(name)).parent_path());
    std::ofstream(path(name), std::ios::binary | std::ios::trunc) << bytes;
}

std::string ToolTest::read(const std::string& name) const
{
    std::ifstream file(path(name), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

std::map<std::string, std::string> ToolTest::contents() const
{
    std::map<std::string, std::string> all;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        all[entry.path().filename().string()] = entry.is_directory() ? "(a folder)" : read(entry.path().string());
    return all;
}

ToolTest::Run ToolTest::run(const std::vector<std::string>& arguments, const std::vector<std::string>& environment) const
{
    std::vector<std::string> texts = {program};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (std::string& text : texts)
        argv.push_back(text.data());
    argv.push_back(nullptr);
    std::vector<std::string> variables = environment;
    const std::string outPath = folder.string() + ".out";
    const std::string errPath = folder.string() + ".err";
    const pid_t child = fork();
    if (child == 0)
    {
        // The child: in the test's folder, with no input, its output in the files, the environment changed.
        const int in = open("/dev/null", O_RDONLY);
        const int out = open(outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        const int err = open(errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        if (chdir(folder.c_str()) == 0 && dup2(in, 0) == 0 && dup2(out, 1) == 1 && dup2(err, 2) == 2)
        {
            for (std::string& variable : variables)
                putenv(variable.data());
            execv(program.c_str(), argv.data());
        }
        _exit(127);
    }
    Run run;
    int status = 0;
    if (child > 0 && waitpid(child, &status, 0) == child)
        run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    if (run.status == 127)
        ADD_FAILURE() << "cannot run " << program;
    run.out = read(outPath);
    run.err = read(errPath);
    return run;
}

void ToolTest::expectFailure(const Run& run, int status, const std::string& text) const
{
    EXPECT_EQ(run.status, status) << run.err;
    EXPECT_NE(run.err.find(text), std::string::npos) << "stderr: " << run.err;
    EXPECT_EQ(run.err.rfind(std::filesystem::path(program).filename().string() + ": ", 0), 0u) << run.err;
    EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
    EXPECT_EQ(run.out, "");
}
