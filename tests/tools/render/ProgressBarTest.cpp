#include "ProgressBar.h"

#include <gtest/gtest.h>

#include <string>

namespace
{
std::string drawn(std::FILE* file)
{
    std::string text(static_cast<std::size_t>(std::ftell(file)), '\0');
    std::rewind(file);
    text.resize(std::fread(text.data(), 1, text.size(), file));
    return text;
}
}

TEST(ProgressBar, RedrawsOnlyWhenThePercentageChangesAndEndsItsLine)
{
    std::FILE* terminal = std::tmpfile();
    ASSERT_NE(terminal, nullptr);
    ProgressBar bar(terminal, 400);
    bar.update(1);    // 0 %
    bar.update(3);    // still 0 %
    bar.update(100);  // 25 %
    bar.update(400);
    bar.finish();
    EXPECT_EQ(drawn(terminal), "\rrendering [........................................]   0%"
                               "\rrendering [##########..............................]  25%"
                               "\rrendering [########################################] 100%\n");
    std::fclose(terminal);
}

TEST(ProgressBar, SilentWithoutTerminalOrBeforeAnyDrawing)
{
    ProgressBar silent(nullptr, 100);
    silent.update(50);
    silent.finish();
    std::FILE* terminal = std::tmpfile();
    ASSERT_NE(terminal, nullptr);
    ProgressBar unused(terminal, 100);
    unused.finish();
    EXPECT_EQ(drawn(terminal), "");
    std::fclose(terminal);
    // An input of a few seconds never gets a bar.
    EXPECT_EQ(ProgressBar::terminalFor(2.0), nullptr);
}
