#include "ProgressBar.h"

#include <gtest/gtest.h>

#include <string>

TEST(ProgressBar, RedrawsOnlyWhenThePercentageChangesAndEndsItsLine)
{
    std::FILE* terminal = std::tmpfile();
    ASSERT_NE(terminal, nullptr);
    {
        ProgressBar unused(terminal, 100);
        unused.finish();  // never drawn: nothing to end
    }
    ProgressBar bar(terminal, 400);
    bar.update(1);    // 0 %
    bar.update(3);    // still 0 %
    bar.update(100);  // 25 %
    bar.update(400);
    bar.finish();
    std::string drawn(static_cast<std::size_t>(std::ftell(terminal)), '\0');
    std::rewind(terminal);
    drawn.resize(std::fread(drawn.data(), 1, drawn.size(), terminal));
    std::fclose(terminal);
    EXPECT_EQ(drawn, "\rrendering [........................................]   0%"
                     "\rrendering [##########..............................]  25%"
                     "\rrendering [########################################] 100%\n");
    // An input of a few seconds never gets a bar.
    EXPECT_EQ(ProgressBar::terminalFor(2.0), nullptr);
}
