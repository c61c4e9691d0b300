#include "Codecs/MOXTC/MOXTCThreadDriver.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>

#include "Support/ProcessorCount.h"

using namespace moxtexture;
using testsupport::CProcessorCount;

namespace
{

/// What a driver calls, counted by block; and the stages in their order.
class CCountingCompressor
{
public:
    CCountingCompressor(uint32_t uiBlocksX, uint32_t uiBlocksY, uint32_t uiIterations = 1, uint32_t uiInterval = 1)
        : m_uiBlocksX(uiBlocksX),
          m_uiBlocksY(uiBlocksY),
          m_uiIterations(uiIterations),
          m_uiInterval(uiInterval),
          m_Colours(size_t{uiBlocksX} * uiBlocksY),
          m_Modulations(m_Colours.size())
    {
    }

    uint32_t getBlocksX() const { return m_uiBlocksX; }
    uint32_t getBlocksY() const { return m_uiBlocksY; }
    uint32_t getIterations() const { return m_uiIterations; }
    uint32_t getModulationInterval() const { return m_uiInterval; }

    void OptimiseColours(uint32_t uiX0, uint32_t uiX1, uint32_t uiY0, uint32_t uiY1)
    {
        count(m_Colours, {uiX0, uiX1, uiY0, uiY1});
        ++m_uiColourCalls;
    }
    void OptimiseModulation(uint32_t uiX0, uint32_t uiX1, uint32_t uiY0, uint32_t uiY1)
    {
        count(m_Modulations, {uiX0, uiX1, uiY0, uiY1});
        ++m_uiModulationCalls;
    }
    void UpscaleColours()
    {
        m_UpscalingThreads.push_back(std::this_thread::get_id());
        m_strStages += "C" + std::to_string(m_uiColourCalls) + "M" + std::to_string(m_uiModulationCalls) + " ";
    }

    /// How often the block at (x, y) had its colours and its modulation optimised.
    std::pair<uint32_t, uint32_t> getCounts(uint32_t x, uint32_t y) const
    {
        const size_t uiBlock = size_t{y} * m_uiBlocksX + x;
        return {m_Colours[uiBlock], m_Modulations[uiBlock]};
    }
    const std::vector<std::thread::id>& getUpscalingThreads() const { return m_UpscalingThreads; }
    /// For each upscaling, how many calls of the two other stages had been made before it.
    const std::string& getStages() const { return m_strStages; }
    uint32_t getModulationCalls() const { return m_uiModulationCalls; }

private:
    void count(std::vector<uint32_t>& counts, const BlockRegion& region) const
    {
        for (uint32_t y = region.uiY0; y < region.uiY1; ++y)
            for (uint32_t x = region.uiX0; x < region.uiX1; ++x)
                ++counts.at(size_t{y} * m_uiBlocksX + x);
    }

    uint32_t m_uiBlocksX;
    uint32_t m_uiBlocksY;
    uint32_t m_uiIterations;
    uint32_t m_uiInterval;
    std::vector<uint32_t> m_Colours; // a block is counted by one thread only
    std::vector<uint32_t> m_Modulations;
    std::atomic<uint32_t> m_uiColourCalls{0};
    std::atomic<uint32_t> m_uiModulationCalls{0};
    std::vector<std::thread::id> m_UpscalingThreads;
    std::string m_strStages;
};

/// "x0-x1,y0-y1" for each tile.
std::string describeTiles(uint32_t uiThreads, uint32_t uiBlocksX, uint32_t uiBlocksY)
{
    std::string strTiles;
    for (const BlockRegion& tile : getMOXTCTiles(uiThreads, uiBlocksX, uiBlocksY))
        strTiles += std::to_string(tile.uiX0) + "-" + std::to_string(tile.uiX1) + "," + std::to_string(tile.uiY0) + "-" +
                    std::to_string(tile.uiY1) + " ";
    return strTiles;
}

} // namespace

TEST(MOXTCThreadCount, IsTheLeastOf64AndTheProcessorsAndTheBlocks)
{
    {
        const CProcessorCount hundred(100);
        EXPECT_EQ(64u, getMOXTCThreadCount(10, 10));
        EXPECT_EQ(63u, getMOXTCThreadCount(9, 7));
        EXPECT_EQ(64u, getMOXTCThreadCount(65536, 65536)) << "more blocks than 32 bits count";
    }
    const CProcessorCount six(6);
    EXPECT_EQ(6u, getMOXTCThreadCount(10, 10));
    EXPECT_EQ(5u, getMOXTCThreadCount(5, 1));
    EXPECT_EQ(1u, getMOXTCThreadCount(1, 1));
}

TEST(MOXTCTiles, AreAsManyColumnsAsTheWholeSquareRootOfTheThreads)
{
    EXPECT_EQ("0-8,0-8 ", describeTiles(1, 8, 8));
    EXPECT_EQ("0-8,0-4 0-8,4-8 ", describeTiles(2, 8, 8));                 // 1 by 2
    EXPECT_EQ("0-8,0-2 0-8,2-4 0-8,4-6 ", describeTiles(3, 8, 8));         // 1 by 3, rows 6 and 7 left over
    EXPECT_EQ("0-4,0-4 4-8,0-4 0-4,4-8 4-8,4-8 ", describeTiles(4, 8, 8)); // 2 by 2
    EXPECT_EQ(describeTiles(4, 8, 8), describeTiles(5, 8, 8));             // 5 / 2 = 2
    EXPECT_EQ(6u, getMOXTCTiles(7, 8, 8).size());                          // 2 by 3
    EXPECT_EQ(8u, getMOXTCTiles(8, 8, 8).size());                          // 2 by 4
    EXPECT_EQ(9u, getMOXTCTiles(9, 9, 9).size());                          // 3 by 3
    EXPECT_EQ(63u, getMOXTCTiles(63, 9, 9).size());                        // 7 by 9
    EXPECT_EQ(64u, getMOXTCTiles(64, 9, 9).size());                        // 8 by 8
}

TEST(MOXTCTiles, LeaveTheRemainderOut)
{
    // 2 columns of 3 and 3 rows of 10: column 6 and rows 30 and 31 are in no tile.
    EXPECT_EQ("0-3,0-10 3-6,0-10 0-3,10-20 3-6,10-20 0-3,20-30 3-6,20-30 ", describeTiles(6, 7, 32));
}

TEST(MOXTCTiles, DoNotDivideAnAxisWithFewerBlocksThanTiles)
{
    EXPECT_EQ("0-1,0-10 0-1,10-20 0-1,20-30 ", describeTiles(6, 1, 32)); // 2 columns of tiles become 1
    EXPECT_EQ("0-16,0-2 16-32,0-2 ", describeTiles(6, 32, 2));           // 3 rows of tiles become 1
    EXPECT_EQ("0-2,0-1 2-4,0-1 ", describeTiles(5, 5, 1));               // and column 4 is left over
    EXPECT_EQ("0-2,0-4 ", describeTiles(15, 2, 4));                      // 3 by 5: neither axis has so many
}

TEST(MOXTCTiles, AreNoneForNoThreads)
{
    EXPECT_TRUE(getMOXTCTiles(0, 0, 5).empty());
}

TEST(MOXTCThreadDriver, LeavesTheLastTwoOf32RowsAloneWith6Processors)
{
    const CProcessorCount six(6);
    CCountingCompressor compressor(4, 32, 8);
    CMOXTCThreadDriver driver(compressor);
    EXPECT_EQ(6u, driver.getThreadCount());
    driver.run();
    for (uint32_t y = 0; y < 32; ++y)
        for (uint32_t x = 0; x < 4; ++x)
            EXPECT_EQ(y < 30 ? std::make_pair(8u, 8u) : std::make_pair(0u, 0u), compressor.getCounts(x, y)) << x << ", " << y;
}

TEST(MOXTCThreadDriver, HasOneThreadForASingleBlock)
{
    const CProcessorCount eight(8);
    CCountingCompressor compressor(1, 1, 3);
    CMOXTCThreadDriver driver(compressor);
    EXPECT_EQ(1u, driver.getThreadCount());
    driver.run();
    EXPECT_EQ(std::make_pair(3u, 3u), compressor.getCounts(0, 0));
}

TEST(MOXTCThreadDriver, DoesNothingInNoPasses)
{
    const CProcessorCount four(4);
    CCountingCompressor compressor(4, 4, 0);
    CMOXTCThreadDriver(compressor).run();
    EXPECT_EQ(std::make_pair(0u, 0u), compressor.getCounts(0, 0));
    EXPECT_EQ("", compressor.getStages());
}

TEST(MOXTCThreadDriver, EndsEachStageBeforeTheNextAndUpscalesOnTheCallingThread)
{
    const CProcessorCount four(4);
    CCountingCompressor compressor(4, 4, 3);
    CMOXTCThreadDriver(compressor).run();
    // Four tiles of colours, upscaled, four tiles of modulation, and again.
    EXPECT_EQ("C4M0 C8M4 C12M8 ", compressor.getStages());
    EXPECT_EQ(12u, compressor.getModulationCalls());
    EXPECT_EQ(std::vector<std::thread::id>(3, std::this_thread::get_id()), compressor.getUpscalingThreads());
}

TEST(MOXTCThreadDriver, OptimisesModulationInPassesThatAreMultiplesOfTheInterval)
{
    const CProcessorCount one(1);
    CCountingCompressor third(1, 1, 8, 3); // passes 0, 3 and 6
    CMOXTCThreadDriver(third).run();
    EXPECT_EQ(std::make_pair(8u, 3u), third.getCounts(0, 0));
    CCountingCompressor never(1, 1, 8, 0);
    CMOXTCThreadDriver(never).run();
    EXPECT_EQ(std::make_pair(8u, 0u), never.getCounts(0, 0));
}

TEST(MOXTCThreadDriver, CountsItsThreadsWhenItIsMade)
{
    CCountingCompressor compressor(4, 4);
    setProcessorCount(4);
    const CMOXTCThreadDriver driver(compressor);
    setProcessorCount(0);
    EXPECT_EQ(4u, driver.getThreadCount());
}
