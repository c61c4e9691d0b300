#include "MainWindow/DroppedFiles.h"

#include <filesystem>

#include <QtCore/QMimeData>
#include <gtest/gtest.h>

#include "Support/Environment.h"
#include "Support/TemporaryFolder.h"

namespace
{

/// A descriptor of one file: its count, 72 bytes of which nothing is read, and a name field of 260 bytes.
QByteArray descriptor(const QByteArray& name)
{
    return QByteArray(76, '\x01') + name + QByteArray(260 - name.size(), '\0');
}

std::string nameIn(const QByteArray& bytes)
{
    return getDescriptorFileName(bytes).toStdString();
}

/// TEMP names a folder of the test's own.
class DroppedFiles : public testing::Test
{
protected:
    DroppedFiles() { testsupport::CEnvironmentKeeper::set("TEMP", m_Folder.path()); }

    const testsupport::CTemporaryFolder m_Folder;
    const testsupport::CEnvironmentKeeper m_Environment{"TEMP"};
};

TEST_F(DroppedFiles, TakeTheirNameFromByte76UpToTheFirstZero)
{
    EXPECT_EQ("photo.png", nameIn(descriptor("photo.png")));
    EXPECT_EQ("one", nameIn(descriptor(QByteArray("one\0two", 7))));
}

TEST_F(DroppedFiles, ReadTheirNameAsSingleByteText)
{
    EXPECT_EQ("gr\xC3\xBCn.png", nameIn(descriptor("gr\xFCn.png")));
}

TEST_F(DroppedFiles, TakeTheNameOfTheFirstOfManyFiles)
{
    EXPECT_EQ("first.png", nameIn(descriptor("first.png") + descriptor("second.png")));
}

TEST_F(DroppedFiles, ReadNoNameLongerThanItsField)
{
    EXPECT_EQ(std::string(260, 'n'), nameIn(QByteArray(76, '\0') + QByteArray(400, 'n')));
}

TEST_F(DroppedFiles, HaveNoNameInADescriptorThatIsTooShort)
{
    for (const int iSize : {0, 4, 75, 76})
        EXPECT_EQ("", nameIn(QByteArray(iSize, 'x'))) << iSize;
    EXPECT_EQ("x", nameIn(QByteArray(77, 'x')));
}

TEST_F(DroppedFiles, TakeOnlyTheLastComponentOfAPath)
{
    EXPECT_EQ("passwd", nameIn(descriptor("/etc/passwd")));
    EXPECT_EQ("evil.png", nameIn(descriptor("../../evil.png")));
    EXPECT_EQ("evil.png", nameIn(descriptor("..\\..\\evil.png")));
    EXPECT_EQ("a.png", nameIn(descriptor("C:\\mixed/a.png")));
}

TEST_F(DroppedFiles, RefuseNamesThatAreNoFiles)
{
    for (const char* pName : {"", ".", "..", "folder/", "folder\\", "a/..", "a\\."})
        EXPECT_EQ("", nameIn(descriptor(pName))) << pName;
}

TEST_F(DroppedFiles, AreWrittenToAFreshFolderInTheFolderForTemporaryFiles)
{
    const std::string strFirst = storeDroppedFile("a.bin", QByteArray("\0\1\2", 3)).toStdString();
    const std::string strSecond = storeDroppedFile("a.bin", "other").toStdString();
    EXPECT_EQ(std::vector<uint8_t>({0, 1, 2}), testsupport::readBytes(strFirst));
    EXPECT_EQ("other", testsupport::readText(strSecond));

    const std::filesystem::path parent = std::filesystem::path(m_Folder.path()) / "Halvane";
    EXPECT_EQ(parent, std::filesystem::path(strFirst).parent_path().parent_path());
    EXPECT_EQ(parent, std::filesystem::path(strSecond).parent_path().parent_path());
    EXPECT_NE(std::filesystem::path(strFirst).parent_path(), std::filesystem::path(strSecond).parent_path());
    EXPECT_EQ("a.bin", std::filesystem::path(strFirst).filename());
}

TEST_F(DroppedFiles, AreNotWrittenWithoutAName)
{
    EXPECT_TRUE(storeDroppedFile(QString(), "data").isEmpty());
    EXPECT_EQ(0u, m_Folder.count());
}

TEST_F(DroppedFiles, AreNotWrittenWhereTheFolderCannotBeMade)
{
    testsupport::CEnvironmentKeeper::set("TEMP", m_Folder.write("file", "in the way"));
    EXPECT_TRUE(storeDroppedFile("a.bin", "data").isEmpty());
}

TEST_F(DroppedFiles, AreNotWrittenUnderANameThatTheDiskRefuses)
{
    EXPECT_TRUE(storeDroppedFile(QString(256, 'n'), "data").isEmpty()); // 255 bytes is the most
}

TEST_F(DroppedFiles, AreThereOnlyWithBothFormats)
{
    QMimeData data;
    EXPECT_FALSE(hasVirtualFile(data));
    data.setData("application/x-qt-windows-mime;value=\"FileGroupDescriptor\"", "d");
    EXPECT_FALSE(hasVirtualFile(data));
    data.setData("application/x-qt-windows-mime;value=\"FileContents\"", "c");
    EXPECT_TRUE(hasVirtualFile(data));
    data.removeFormat("application/x-qt-windows-mime;value=\"FileGroupDescriptor\"");
    EXPECT_FALSE(hasVirtualFile(data));
}

} // namespace
