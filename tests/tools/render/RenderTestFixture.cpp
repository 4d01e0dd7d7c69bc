#include "RenderTestFixture.h"

#include <fcntl.h>
#include <sndfile.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cmath>
#include <cstring>
#include <fstream>
#include <sstream>

extern char** environ;

namespace
{
std::string contents(const std::filesystem::path& file)
{
    std::ifstream stream(file);
    std::stringstream text;
    text << stream.rdbuf();
    return text.str();
}
}

void RenderTestFixture::SetUp()
{
    const ::testing::TestInfo* test = ::testing::UnitTest::GetInstance()->current_test_info();
    folder = std::filesystem::path(RENDER_TEST_WORK_FOLDER) / (std::string(test->test_suite_name()) + "." + test->name());
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
}

std::string RenderTestFixture::path(const std::string& name) const
{
    return (folder / name).string();
}

void RenderTestFixture::writeAudio(const std::string& file, const Audio& audio, int format) const
{
    SF_INFO info{};
    info.channels = audio.channels;
    info.samplerate = audio.sampleRate;
    info.format = format;
    SNDFILE* handle = sf_open(file.c_str(), SFM_WRITE, &info);
    ASSERT_NE(handle, nullptr) << sf_strerror(nullptr);
    const sf_count_t frames = static_cast<sf_count_t>(audio.samples.size()) / audio.channels;
    EXPECT_EQ(sf_writef_float(handle, audio.samples.data(), frames), frames);
    sf_close(handle);
}

RenderTestFixture::Audio RenderTestFixture::readAudio(const std::string& file) const
{
    Audio audio;
    SF_INFO info{};
    SNDFILE* handle = sf_open(file.c_str(), SFM_READ, &info);
    if (handle == nullptr)
    {
        ADD_FAILURE() << "cannot read " << file << ": " << sf_strerror(nullptr);
        return audio;
    }
    audio.channels = info.channels;
    audio.sampleRate = info.samplerate;
    audio.samples.resize(static_cast<std::size_t>(info.frames * info.channels));
    sf_readf_float(handle, audio.samples.data(), info.frames);
    sf_close(handle);
    return audio;
}

RenderTestFixture::Run RenderTestFixture::render(const std::vector<std::string>& arguments,
                                                 const std::vector<std::string>& environment) const
{
    std::vector<std::string> argumentTexts = {KELVANE_RENDER};
    argumentTexts.insert(argumentTexts.end(), arguments.begin(), arguments.end());
    std::vector<std::string> environmentTexts(environment);
    for (char** entry = environ; *entry != nullptr; ++entry)
    {
        const std::string text = *entry;
        const std::string name = text.substr(0, text.find('=') + 1);
        bool replaced = false;
        for (const std::string& override : environment)
            replaced = replaced || override.compare(0, name.size(), name) == 0;
        if (!replaced)
            environmentTexts.push_back(text);
    }
    std::vector<char*> argv;
    for (std::string& text : argumentTexts)
        argv.push_back(text.data());
    argv.push_back(nullptr);
    std::vector<char*> envp;
    for (std::string& text : environmentTexts)
        envp.push_back(text.data());
    envp.push_back(nullptr);

    const std::string outPath = path("stdout.txt");
    const std::string errPath = path("stderr.txt");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
    pid_t child = 0;
    Run run;
    const int spawned = posix_spawn(&child, argv[0], &actions, nullptr, argv.data(), envp.data());
    posix_spawn_file_actions_destroy(&actions);
    if (spawned != 0)
    {
        ADD_FAILURE() << "cannot run " << argv[0] << ": " << std::strerror(spawned);
        return run;
    }
    int status = 0;
    waitpid(child, &status, 0);
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    run.out = contents(outPath);
    run.err = contents(errPath);
    std::filesystem::remove(outPath);
    std::filesystem::remove(errPath);
    return run;
}

RenderTestFixture::Audio RenderTestFixture::signal(int channels, int frames, int sampleRate)
{
    Audio audio;
    audio.channels = channels;
    audio.sampleRate = sampleRate;
    for (int frame = 0; frame < frames; ++frame)
        for (int channel = 0; channel < channels; ++channel)
        {
            const double phase = 2.0 * M_PI * (220.0 * (channel + 1)) * frame / sampleRate;
            const double ramp = static_cast<double>(frame) / frames - 0.5;
            audio.samples.push_back(static_cast<float>(0.6 * std::sin(phase) + 0.5 * ramp * (channel == 0 ? 1 : -1)));
        }
    return audio;
}
