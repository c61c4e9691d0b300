#include "CommandLine/Json.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace moxtexture;

namespace
{

std::string textAsJson(std::string_view strText)
{
    return CJsonWriter().text(strText).getText();
}

} // namespace

TEST(Json, PutsCommasBetweenValuesAndNoneElsewhere)
{
    CJsonWriter json;
    json.beginObject();
    json.key("a").number(1);
    json.key("b").beginArray().beginObject().endObject().boolean(true).beginArray().endArray().text("x").endArray();
    json.key("c").boolean(false);
    json.endObject();
    EXPECT_EQ(R"({"a": 1, "b": [{}, true, [], "x"], "c": false})", json.getText());
}

TEST(Json, EscapesQuotesBackslashesAndControlCharacters)
{
    EXPECT_EQ(R"("a\"b\\c/d")", textAsJson("a\"b\\c/d"));
    EXPECT_EQ(R"("\u0000\u0009\u000a\u001f")", textAsJson(std::string_view("\0\t\n\x1F", 4)));
    EXPECT_EQ("\"\x7F\"", textAsJson("\x7F"));
}

TEST(Json, KeepsUtf8AsItIs)
{
    // Two, three and four bytes: u with diaeresis, the euro sign, a musical clef.
    EXPECT_EQ("\"\xC3\xBC\xE2\x82\xAC\xF0\x9D\x84\x9E\"", textAsJson("\xC3\xBC\xE2\x82\xAC\xF0\x9D\x84\x9E"));
}

TEST(Json, ReplacesBytesThatAreNoUtf8)
{
    const std::string strReplacement = "\xEF\xBF\xBD";
    EXPECT_EQ("\"a" + strReplacement + "b\"", textAsJson("a\xFF"
                                                         "b"));
    EXPECT_EQ("\"" + strReplacement + "\"", textAsJson("\xC3"));                                           // cut short
    EXPECT_EQ("\"" + strReplacement + strReplacement + "\"", textAsJson("\xC0\xAF"));                      // an overlong '/'
    EXPECT_EQ("\"" + strReplacement + strReplacement + strReplacement + "\"", textAsJson("\xED\xA0\x80")); // half of a pair
    EXPECT_EQ("\"" + strReplacement + "(\"", textAsJson("\xE2("));
}

TEST(Json, WritesNumbersWithoutLoss)
{
    EXPECT_EQ("18446744073709551615", CJsonWriter().number(UINT64_MAX).getText());
    EXPECT_EQ("0.1", CJsonWriter().real(0.1).getText());
    EXPECT_EQ("-2.5", CJsonWriter().real(-2.5).getText());
    EXPECT_EQ("0", CJsonWriter().real(0.0).getText());
}

TEST(Json, WritesNullForAValueThatIsNotFinite)
{
    EXPECT_EQ("null", CJsonWriter().real(std::numeric_limits<double>::infinity()).getText());
    EXPECT_EQ("null", CJsonWriter().real(-std::numeric_limits<double>::infinity()).getText());
    EXPECT_EQ("null", CJsonWriter().real(std::nan("")).getText());
}

TEST(Hex, IsTwoLowerCaseDigitsAByte)
{
    const uint8_t aui8Bytes[] = {0x00, 0x0A, 0xFF};
    EXPECT_EQ("000aff", toHex(aui8Bytes, 3));
    EXPECT_EQ("", toHex(nullptr, 0));
}

TEST(HexNumber, HasAsManyDigitsAsAsked)
{
    EXPECT_EQ("0x0808080861626772", toHexNumber(0x0808080861626772, 16));
    EXPECT_EQ("0x03584f4d", toHexNumber(0x03584F4D, 8));
    EXPECT_EQ("0x0000000000000007", toHexNumber(7, 16));
}
