#include "common/PendingFile.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace
{
class PendingFileTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        folder = std::filesystem::path(TOOLSUPPORT_TEST_WORK_FOLDER)
                 / ::testing::UnitTest::GetInstance()->current_test_info()->name();
        std::filesystem::remove_all(folder);
        std::filesystem::create_directories(folder);
        destination = (folder / "take.wav").string();
    }

    static void writeText(const PendingFile& file, const std::string& text)
    {
        ASSERT_EQ(write(file.descriptor(), text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }

    static std::string contents(const std::string& path)
    {
        std::ifstream stream(path);
        std::stringstream text;
        text << stream.rdbuf();
        return text.str();
    }

    std::size_t fileCount() const
    {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
    }

    std::filesystem::path folder;
    std::string destination;
};
}

TEST_F(PendingFileTest, ContentAppearsUnderItsNameOnlyWhenPublished)
{
    PendingFile file;
    ASSERT_EQ(file.create(destination), "");
    writeText(file, "complete");
    EXPECT_FALSE(std::filesystem::exists(destination));
    EXPECT_EQ(fileCount(), 1u);
    ASSERT_EQ(file.publish(false), "");
    EXPECT_EQ(contents(destination), "complete");
    EXPECT_EQ(fileCount(), 1u);
}

TEST_F(PendingFileTest, UnpublishedFileLeavesNothingBehind)
{
    {
        PendingFile file;
        ASSERT_EQ(file.create(destination), "");
        writeText(file, "half");
    }
    EXPECT_EQ(fileCount(), 0u);
}

TEST_F(PendingFileTest, ExistingFileIsReplacedOnlyWhenAsked)
{
    std::ofstream(destination) << "old";
    PendingFile refused;
    ASSERT_EQ(refused.create(destination), "");
    writeText(refused, "new");
    EXPECT_EQ(refused.publish(false), destination + " already exists");
    EXPECT_EQ(contents(destination), "old");
    EXPECT_EQ(fileCount(), 1u);

    PendingFile replacing;
    ASSERT_EQ(replacing.create(destination), "");
    writeText(replacing, "new");
    ASSERT_EQ(replacing.publish(true), "");
    EXPECT_EQ(contents(destination), "new");
    EXPECT_EQ(fileCount(), 1u);
}

TEST_F(PendingFileTest, PublishedFileHasTheUsersUsualPermissions)
{
    const mode_t previous = umask(027);
    PendingFile file;
    ASSERT_EQ(file.create(destination), "");
    ASSERT_EQ(file.publish(false), "");
    umask(previous);
    struct stat status{};
    ASSERT_EQ(stat(destination.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640u);
}

TEST_F(PendingFileTest, MissingFolderIsReportedAtCreation)
{
    PendingFile file;
    const std::string missing = (folder / "absent" / "take.wav").string();
    EXPECT_EQ(file.create(missing).rfind("cannot write in " + (folder / "absent").string() + ": ", 0), 0u);
    EXPECT_EQ(file.descriptor(), -1);
    EXPECT_NE(file.publish(false), "");
}
