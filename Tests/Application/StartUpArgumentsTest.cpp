#include "Application/StartUpArguments.h"

#include <gtest/gtest.h>

TEST(StartUpArguments, FewerThanThreeOpenNothing)
{
    EXPECT_EQ(OpenRequest::eNothing, readStartUpArguments({}).eKind);
    EXPECT_EQ(OpenRequest::eNothing, readStartUpArguments({"halvane"}).eKind);
    EXPECT_EQ(OpenRequest::eNothing, readStartUpArguments({"halvane", "a.mox"}).eKind);
}

TEST(StartUpArguments, TwoBehindTheProgramOpenTheSecond)
{
    const OpenRequest request = readStartUpArguments({"halvane", "a.mox", "b.mox"});
    EXPECT_EQ(OpenRequest::eOne, request.eKind);
    EXPECT_EQ("b.mox", request.strFirst);
}

TEST(StartUpArguments, ThreeBehindTheProgramCompareTheSecondAndTheThird)
{
    const OpenRequest request = readStartUpArguments({"halvane", "a.mox", "b.mox", "c.mox"});
    EXPECT_EQ(OpenRequest::eTwo, request.eKind);
    EXPECT_EQ("b.mox", request.strFirst);
    EXPECT_EQ("c.mox", request.strSecond);
}

TEST(StartUpArguments, DropsAFourth)
{
    const OpenRequest request = readStartUpArguments({"halvane", "a.mox", "b.mox", "c.mox", "d.mox"});
    EXPECT_EQ(OpenRequest::eTwo, request.eKind);
    EXPECT_EQ("b.mox", request.strFirst);
    EXPECT_EQ("c.mox", request.strSecond);
}
