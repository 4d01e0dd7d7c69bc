#include "common/PendingFile.h"

#include "ToolTest.h"

#include <sys/stat.h>
#include <unistd.h>

namespace
{
class PendingFileTest : public ToolTest
{
protected:
    // A pending file for take.wav holding `text`.
    void create(PendingFile& file, const std::string& text)
    {
        ASSERT_EQ(file.create(path("take.wav")), "");
        ASSERT_EQ(::write(file.descriptor(), text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }
};
}  // namespace

TEST_F(PendingFileTest, ContentAppearsUnderItsNameOnlyWhenPublishedAndReplacesAFileOnlyWhenAsked)
{
    {
        PendingFile abandoned;
        create(abandoned, "half");
    }
    EXPECT_TRUE(contents().empty());

    write("take.wav", "old");
    PendingFile refused;
    create(refused, "new");
    EXPECT_EQ(refused.publish(false), path("take.wav") + " already exists");
    EXPECT_EQ(read("take.wav"), "old");
    PendingFile replacing;
    create(replacing, "new");
    EXPECT_EQ(read("take.wav"), "old");
    ASSERT_EQ(replacing.publish(true), "");
    EXPECT_EQ(contents(), (std::map<std::string, std::string>{{"take.wav", "new"}}));
}

TEST_F(PendingFileTest, PublishedFileHasTheUsersUsualPermissionsAndAMissingFolderIsReportedAtCreation)
{
    const mode_t previous = umask(027);
    PendingFile file;
    create(file, "");
    ASSERT_EQ(file.publish(false), "");
    umask(previous);
    struct stat status{};
    EXPECT_EQ(stat(path("take.wav").c_str(), &status) == 0 ? status.st_mode & 0777 : 0u, 0640u);

    PendingFile nowhere;
    EXPECT_EQ(nowhere.create(path("absent/take.wav")).rfind("cannot write in " + path("absent") + ": ", 0), 0u);
    EXPECT_NE(nowhere.publish(false), "");
}
