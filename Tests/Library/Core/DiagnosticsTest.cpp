#include "Core/Diagnostics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using namespace moxtexture;

std::vector<std::string> g_astrReceived;

void receive(const char* pszText)
{
    g_astrReceived.emplace_back(pszText);
}

void receiveTwice(const char* pszText)
{
    receive(pszText);
    receive(pszText);
}

/// Every case starts and ends silent.
class Diagnostics : public testing::Test
{
protected:
    void SetUp() override { g_astrReceived.clear(); }
    void TearDown() override { setDiagnosticsHook(nullptr); }
};

TEST_F(Diagnostics, TheLibraryIsSilentAtTheStart)
{
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    writeDiagnostic("nobody listens\n");
    EXPECT_EQ("", testing::internal::GetCapturedStdout());
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
}

TEST_F(Diagnostics, AHookReceivesEachTextAsItStandsAndNothingIsWrittenElsewhere)
{
    setDiagnosticsHook(receive);
    testing::internal::CaptureStdout();
    writeDiagnostic("one 100%s\n");
    writeDiagnostic("");
    EXPECT_EQ("", testing::internal::GetCapturedStdout());
    EXPECT_THAT(g_astrReceived, testing::ElementsAre("one 100%s\n", ""));
}

TEST_F(Diagnostics, ALaterHookTakesThePlaceOfTheOneBefore)
{
    setDiagnosticsHook(receive);
    setDiagnosticsHook(receiveTwice);
    writeDiagnostic("x");
    EXPECT_THAT(g_astrReceived, testing::ElementsAre("x", "x"));
}

TEST_F(Diagnostics, NoHookIsSilentAgain)
{
    setDiagnosticsHook(receive);
    setDiagnosticsHook(nullptr);
    writeDiagnostic("x");
    EXPECT_TRUE(g_astrReceived.empty());
}

} // namespace
