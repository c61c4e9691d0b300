#include "Core/OneShotReadBuf.h"

#include <istream>
#include <limits>
#include <ostream>
#include <string>

#include <gtest/gtest.h>

using namespace moxtexture;

namespace
{

const std::vector<uint8_t> k_Bytes = {'0', '1', '2', '3', '4', '5', 0, 255};

class OneShotReadBufOfEight : public testing::Test
{
protected:
    OneShotReadBuf m_Buffer{k_Bytes};
    std::istream m_Stream{&m_Buffer};
};

} // namespace

TEST_F(OneShotReadBufOfEight, GivesTheBytesOfTheRangeAndThenTheEndOfFile)
{
    for (const uint8_t ui8Byte : k_Bytes)
        EXPECT_EQ(ui8Byte, m_Stream.get());
    EXPECT_EQ(std::char_traits<char>::eof(), m_Stream.get());
    EXPECT_TRUE(m_Stream.eof());
}

TEST_F(OneShotReadBufOfEight, AReadPastTheEndDeliversWhatThereIsAndFails)
{
    char acBytes[10] = {};
    m_Stream.read(acBytes, 10);
    EXPECT_EQ(8, m_Stream.gcount());
    EXPECT_TRUE(m_Stream.fail());
    EXPECT_EQ('5', acBytes[5]);
}

TEST_F(OneShotReadBufOfEight, AShortReadThrowsForAReaderThatAskedForExceptions)
{
    m_Stream.exceptions(std::ios::badbit | std::ios::failbit | std::ios::eofbit);
    char acBytes[9];
    EXPECT_THROW(m_Stream.read(acBytes, 9), std::runtime_error);
}

TEST_F(OneShotReadBufOfEight, SeeksFromTheStartTheEndAndThePosition)
{
    m_Stream.seekg(3);
    EXPECT_EQ('3', m_Stream.get());
    m_Stream.seekg(-2, std::ios::cur);
    EXPECT_EQ('2', m_Stream.get());
    m_Stream.seekg(1, std::ios::cur);
    EXPECT_EQ('4', m_Stream.get());
    m_Stream.seekg(-8, std::ios::end);
    EXPECT_EQ('0', m_Stream.get());
    EXPECT_EQ(1, m_Stream.tellg());
}

TEST_F(OneShotReadBufOfEight, TheEndItselfMayBeSoughtAndHasNothingToRead)
{
    m_Stream.seekg(0, std::ios::end);
    EXPECT_EQ(8, m_Stream.tellg());
    EXPECT_EQ(std::char_traits<char>::eof(), m_Stream.peek());
    m_Stream.clear();
    m_Stream.seekg(8);
    EXPECT_TRUE(m_Stream.good());
}

TEST_F(OneShotReadBufOfEight, ASeekOutOfTheRangeFailsAndMovesNothing)
{
    m_Stream.seekg(3);
    for (const std::ios::seekdir eFrom : {std::ios::beg, std::ios::cur, std::ios::end})
    {
        for (const std::streamoff iOffset : {std::streamoff{-9}, std::streamoff{9}, std::numeric_limits<std::streamoff>::min(),
                                             std::numeric_limits<std::streamoff>::max()})
        {
            EXPECT_EQ(-1, std::streamoff(m_Buffer.pubseekoff(iOffset, eFrom, std::ios::in))) << iOffset;
            EXPECT_EQ(3, m_Stream.tellg());
        }
    }
    m_Stream.seekg(9);
    EXPECT_TRUE(m_Stream.fail());
    m_Stream.clear();
    EXPECT_EQ('3', m_Stream.get());
}

TEST_F(OneShotReadBufOfEight, ThereIsNoPutArea)
{
    EXPECT_EQ(std::char_traits<char>::eof(), m_Buffer.sputc('x'));
    EXPECT_EQ(0, m_Buffer.sputn("xy", 2));
    EXPECT_EQ(-1, std::streamoff(m_Buffer.pubseekpos(1, std::ios::out)));
    EXPECT_EQ('0', m_Stream.get());
}

TEST(OneShotReadBuf, AnEmptyRangeIsAtItsEndAtOnceAndHasOnePosition)
{
    const std::vector<uint8_t> nothing;
    OneShotReadBuf buffer(nothing);
    EXPECT_EQ(std::char_traits<char>::eof(), buffer.sgetc());
    EXPECT_EQ(0, std::streamoff(buffer.pubseekoff(0, std::ios::end, std::ios::in)));
    EXPECT_EQ(0, std::streamoff(buffer.pubseekpos(0, std::ios::in)));
    EXPECT_EQ(-1, std::streamoff(buffer.pubseekpos(1, std::ios::in)));
}
