#include "Codecs/MOXTC/RefinementPasses.h"

#include <gtest/gtest.h>

#include <string>

using namespace moxtexture;

namespace
{

/// Notes what it is told to do: c and m with the region for colours and modulation, u for upscaling.
class CNotingCompressor
{
public:
    CNotingCompressor(uint32_t uiIterations, uint32_t uiInterval) : m_uiIterations(uiIterations), m_uiInterval(uiInterval) {}

    uint32_t getIterations() const { return m_uiIterations; }
    uint32_t getModulationInterval() const { return m_uiInterval; }
    void OptimiseColours(uint32_t uiX0, uint32_t uiX1, uint32_t uiY0, uint32_t uiY1) { note('c', uiX0, uiX1, uiY0, uiY1); }
    void OptimiseModulation(uint32_t uiX0, uint32_t uiX1, uint32_t uiY0, uint32_t uiY1) { note('m', uiX0, uiX1, uiY0, uiY1); }
    void UpscaleColours() { m_strNotes += "u "; }

    const std::string& getNotes() const { return m_strNotes; }

private:
    void note(char cStep, uint32_t uiX0, uint32_t uiX1, uint32_t uiY0, uint32_t uiY1)
    {
        m_strNotes += cStep + std::to_string(uiX0) + std::to_string(uiX1) + std::to_string(uiY0) + std::to_string(uiY1) + ' ';
    }

    uint32_t m_uiIterations;
    uint32_t m_uiInterval;
    std::string m_strNotes;
};

std::string runPasses(uint32_t uiIterations, uint32_t uiInterval)
{
    CNotingCompressor compressor(uiIterations, uiInterval);
    runRefinementPasses(compressor, [](const auto& step) { step(BlockRegion{0, 1, 2, 3}); });
    return compressor.getNotes();
}

} // namespace

TEST(RefinementPasses, APassIsColoursThenUpscalingThenModulation)
{
    EXPECT_EQ("c0123 u m0123 ", runPasses(1, 1));
    EXPECT_EQ("c0123 u m0123 c0123 u m0123 ", runPasses(2, 1));
}

TEST(RefinementPasses, NoPassesDoNothing)
{
    EXPECT_EQ("", runPasses(0, 1));
}

TEST(RefinementPasses, ModulationIsDoneInPassesThatAreMultiplesOfTheInterval)
{
    EXPECT_EQ("c0123 u m0123 c0123 u c0123 u c0123 u m0123 ", runPasses(4, 3));
}

TEST(RefinementPasses, AnIntervalOfZeroNeverDoesModulation)
{
    EXPECT_EQ("c0123 u c0123 u ", runPasses(2, 0));
}

TEST(RefinementPasses, AStepIsDoneForEveryTileBeforeTheNextStep)
{
    CNotingCompressor compressor(1, 1);
    runRefinementPasses(compressor,
                        [](const auto& step)
                        {
                            step(BlockRegion{0, 1, 0, 2});
                            step(BlockRegion{1, 2, 0, 2});
                        });
    EXPECT_EQ("c0102 c1202 u m0102 m1202 ", compressor.getNotes());
}
