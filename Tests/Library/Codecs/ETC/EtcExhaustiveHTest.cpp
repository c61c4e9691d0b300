#include "Codecs/ETC/EtcExhaustiveH.h"

#include "Codecs/ETC/EtcDecodeBlock.h"
#include "Codecs/ETC/EtcHModes.h"
#include "EtcExhaustiveModes.h"
#include "ReferenceEtcExhaustiveH.h"

using namespace moxtexture;

TEST(EtcExhaustiveH, GivesTheReferenceBlocks)
{
    etctest::expectReferenceBlocks(searchHExhaustive, etcreference::searchHExhaustive, 60);
}

TEST(EtcExhaustiveH, GivesTheReferenceBlocksByThePerceptualMeasure)
{
    etctest::expectReferenceBlocks(searchHExhaustivePerceptual, etcreference::searchHExhaustivePerceptual, 70);
}

TEST(EtcExhaustiveH, GivesTheFastBlockWhereNoPairIsBelowTheBound)
{
    etctest::expectFastBlockAtTightBounds(searchHExhaustive, hFast);
    etctest::expectFastBlockAtTightBounds(searchHExhaustivePerceptual, hFastPerceptual);
}

TEST(EtcExhaustiveH, GivesTheErrorOfTheDecodedBlock)
{
    etctest::expectErrorsOfDecodedBlocks(searchHExhaustive, searchHExhaustivePerceptual, decodeEtcPixelsH);
}

TEST(EtcExhaustiveH, FindsEveryBlockThatTheModePainted)
{
    etctest::expectOwnBlocksFound(searchHExhaustive, searchHExhaustivePerceptual, decodeEtcPixelsH, 26);
}
