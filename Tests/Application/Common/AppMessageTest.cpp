#include "Common/AppMessage.h"

#include <gtest/gtest.h>

namespace
{

void expectOne(const char* strPath, const char* strMessage)
{
    const OpenRequest request = readAppMessage(strMessage);
    EXPECT_EQ(OpenRequest::eOne, request.eKind);
    EXPECT_EQ(strPath, request.strFirst.toStdString());
}

void expectTwo(const char* strFirst, const char* strSecond, const char* strMessage)
{
    const OpenRequest request = readAppMessage(strMessage);
    EXPECT_EQ(OpenRequest::eTwo, request.eKind);
    EXPECT_EQ(strFirst, request.strFirst.toStdString());
    EXPECT_EQ(strSecond, request.strSecond.toStdString());
}

} // namespace

TEST(AppMessage, OfTheProgramsNameOpensNothing)
{
    EXPECT_EQ(OpenRequest::eNothing, readAppMessage("Halvane").eKind);
}

TEST(AppMessage, OfNearlyTheProgramsNameIsAPath)
{
    expectOne("halvane", "halvane");
    expectOne("Halvane ", "Halvane ");
    expectOne("Halvane/a.mox", "Halvane/a.mox");
}

TEST(AppMessage, WithoutASeparatorIsOnePath)
{
    expectOne("/tmp/a b.mox", "/tmp/a b.mox");
    expectOne("/tmp/Gr\xC3\xB6\xC3\x9F"
              "e.png",
              "/tmp/Gr\xC3\xB6\xC3\x9F"
              "e.png");
    expectOne("a$!b", "a$!b");
    expectOne("", "");
}

TEST(AppMessage, WithASeparatorIsTwoPaths)
{
    expectTwo("/a.mox", "/b.mox", "/a.mox$!?/b.mox");
}

TEST(AppMessage, KeepsEmptyParts)
{
    expectTwo("", "/b.mox", "$!?/b.mox");
    expectTwo("/a.mox", "", "/a.mox$!?");
    expectTwo("", "", "$!?");
    expectTwo("", "", "$!?$!?c");
    expectTwo("Halvane", "", "Halvane$!?");
}

TEST(AppMessage, DropsFurtherParts)
{
    expectTwo("/a.mox", "/b.mox", "/a.mox$!?/b.mox$!?/c.mox$!?/d.mox");
}
