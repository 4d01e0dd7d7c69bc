#include "KelvanePackFixture.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>
#include <fstream>
#include <iterator>

extern char** environ;

void KelvanePack::SetUp()
{
    const ::testing::TestInfo* test = ::testing::UnitTest::GetInstance()->current_test_info();
    folder = std::filesystem::path(PACK_TEST_WORK_FOLDER) / (std::string(test->test_suite_name()) + "." + test->name());
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
}

void KelvanePack::write(const std::string& name, const std::string& bytes) const
{
    std::ofstream(path(name), std::ios::binary | std::ios::trunc) << bytes;
}

std::string KelvanePack::read(const std::string& name) const
{
    std::ifstream file(path(name), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

std::vector<std::string> KelvanePack::files() const
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

KelvanePack::Run KelvanePack::pack(const std::vector<std::string>& arguments) const
{
    // Output goes to files outside the test's folder, so that files() sees only the tool's work.
    const std::string outPath = folder.string() + ".out", errPath = folder.string() + ".err";
    std::vector<std::string> texts = {KELVANE_PACK};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (std::string& text : texts)
        argv.push_back(text.data());
    argv.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    posix_spawn_file_actions_addopen(&actions, 2, errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
    Run run;
    pid_t child = 0;
    if (posix_spawn(&child, texts[0].c_str(), &actions, nullptr, argv.data(), environ) == 0)
    {
        int status = 0;
        waitpid(child, &status, 0);
        run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    posix_spawn_file_actions_destroy(&actions);
    const auto contents = [](const std::string& file) {
        std::ifstream stream(file, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
    };
    run.out = contents(outPath);
    run.err = contents(errPath);
    return run;
}

void KelvanePack::expectFailure(const Run& run, int status, const std::string& text)
{
    EXPECT_EQ(run.status, status) << run.err;
    EXPECT_NE(run.err.find(text), std::string::npos) << "stderr: " << run.err;
    EXPECT_EQ(run.err.rfind("kelvane-pack: ", 0), 0u) << run.err;
    EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
    EXPECT_EQ(run.out, "");
}
