#include "Codecs/ETC/EtcExhaustiveT.h"

#include "Codecs/ETC/EtcDecodeBlock.h"
#include "Codecs/ETC/EtcTModes.h"
#include "EtcExhaustiveModes.h"
#include "ReferenceEtcExhaustiveT.h"

using namespace moxtexture;

TEST(EtcExhaustiveT, GivesTheReferenceBlocks)
{
    etctest::expectReferenceBlocks(searchTExhaustive, etcreference::searchTExhaustive, 60);
}

TEST(EtcExhaustiveT, GivesTheReferenceBlocksByThePerceptualMeasure)
{
    etctest::expectReferenceBlocks(searchTExhaustivePerceptual, etcreference::searchTExhaustivePerceptual, 70);
}

TEST(EtcExhaustiveT, GivesTheFastBlockWhereNoPairIsBelowTheBound)
{
    etctest::expectFastBlockAtTightBounds(searchTExhaustive, tFast);
    etctest::expectFastBlockAtTightBounds(searchTExhaustivePerceptual, tFastPerceptual);
}

TEST(EtcExhaustiveT, GivesTheErrorOfTheDecodedBlock)
{
    etctest::expectErrorsOfDecodedBlocks(searchTExhaustive, searchTExhaustivePerceptual, decodeEtcPixelsT);
}

TEST(EtcExhaustiveT, FindsEveryBlockThatTheModePainted)
{
    etctest::expectOwnBlocksFound(searchTExhaustive, searchTExhaustivePerceptual, decodeEtcPixelsT, 27);
}
