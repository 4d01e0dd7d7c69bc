#include "ToolTest.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>
#include <fstream>
#include <iterator>

extern char** environ;

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

std::vector<std::string> ToolTest::files() const
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

std::map<std::string, std::string> ToolTest::contents() const
{
    std::map<std::string, std::string> all;
    for (const std::string& name : files())
        all[name] = std::filesystem::is_directory(path(name)) ? "(a folder)" : read(name);
    return all;
}

ToolTest::Run ToolTest::run(const std::vector<std::string>& arguments, const std::vector<std::string>& environment) const
{
    std::vector<std::string> texts = {program};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<std::string> environmentTexts(environment);
    for (char** entry = environ; *entry != nullptr; ++entry)
    {
        const std::string text = *entry;
        const std::string name = text.substr(0, text.find('=') + 1);
        if (std::none_of(environment.begin(), environment.end(),
                         [&](const std::string& given) { return given.compare(0, name.size(), name) == 0; }))
            environmentTexts.push_back(text);
    }
    std::vector<char*> argv;
    for (std::string& text : texts)
        argv.push_back(text.data());
    argv.push_back(nullptr);
    std::vector<char*> envp;
    for (std::string& text : environmentTexts)
        envp.push_back(text.data());
    envp.push_back(nullptr);

    const std::string outPath = folder.string() + ".out";
    const std::string errPath = folder.string() + ".err";
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 1, outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    posix_spawn_file_actions_addopen(&actions, 2, errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
    Run run;
    pid_t child = 0;
    if (posix_spawn(&child, program.c_str(), &actions, nullptr, argv.data(), envp.data()) == 0)
    {
        int status = 0;
        waitpid(child, &status, 0);
        run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    else
        ADD_FAILURE() << "cannot run " << program;
    posix_spawn_file_actions_destroy(&actions);
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
