#pragma once

#include "RenderTestFixture.h"

#include <algorithm>
#include <string>
#include <vector>

// The kelvane-render tests' fixture: an input and an output path in the test's folder, runs
// with the test gain plug-in, and the checks that every failing run must pass.
class KelvaneRender : public RenderTestFixture
{
protected:
    void SetUp() override
    {
        RenderTestFixture::SetUp();
        input = path("in.wav");
        output = path("out.wav");
    }

    Run renderWith(std::vector<std::string> arguments) const
    {
        arguments.insert(arguments.begin(), {"--plugin", TEST_GAIN_PLUGIN});
        return render(arguments);
    }

    // The files in the test folder, so a failed run can be shown to leave nothing behind.
    std::vector<std::string> files() const
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

    // One line on stderr, "kelvane-render: ..." containing `text`, and the exit status.
    static void expectFailure(const Run& run, int status, const std::string& text)
    {
        EXPECT_EQ(run.status, status) << run.err;
        EXPECT_NE(run.err.find(text), std::string::npos) << "stderr: " << run.err;
        EXPECT_EQ(run.err.rfind("kelvane-render: ", 0), 0u) << run.err;
        EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
        EXPECT_EQ(run.out, "");
    }

    std::string input;
    std::string output;
};
