#include "Formats/LegacyTypeTable.h"

#include <algorithm>
#include <iterator>

#include <gtest/gtest.h>

using namespace moxtexture;

namespace
{

/// A word, a channel type, a colour space, pre-multiplied, as plain numbers.
struct Numbers
{
    uint64_t uiWord;
    uint32_t uiChannelType, uiColourSpace;
    bool bPreMultiplied;
};

PixelEncoding encodingOf(const Numbers& numbers)
{
    return {MOXPixelWord(numbers.uiWord), static_cast<EMOXTChannelType>(numbers.uiChannelType),
            static_cast<EMOXTColourSpace>(numbers.uiColourSpace), numbers.bPreMultiplied};
}

struct ReadRow
{
    uint32_t uiType;
    Numbers numbers;
};

struct WrittenRow
{
    uint32_t uiApi;
    Numbers numbers;
    int32_t iType;
};

// clang-format off
constexpr ReadRow k_aRead[] = {
    {0, {0x0404040462677261, 4, 0, false}},
    {1, {0x0505050162677261, 4, 0, false}},
    {2, {0x0005060500626772, 4, 0, false}},
    {3, {0x0505050162677278, 4, 0, false}},
    {4, {0x0008080800626772, 8, 0, false}},
    {5, {0x0808080862677261, 8, 0, false}},
    {6, {0x0203030862677261, 4, 0, false}},
    {7, {0x0000000800000069, 0, 0, false}},
    {8, {0x0000080800006961, 4, 0, false}},
    {9, {0x0000000000000012, 0, 0, false}},
    {10, {0x0000000000000011, 0, 0, false}},
    {11, {0x0000000000000010, 0, 0, false}},
    {12, {0x0000000000000001, 0, 0, false}},
    {13, {0x0000000000000003, 0, 0, false}},
    {16, {0x0404040461626772, 4, 0, false}},
    {17, {0x0105050561626772, 4, 0, false}},
    {18, {0x0808080861626772, 0, 0, false}},
    {19, {0x0005060500626772, 4, 0, false}},
    {20, {0x0105050578626772, 4, 0, false}},
    {21, {0x0008080800626772, 0, 0, false}},
    {22, {0x000000080000006C, 0, 0, false}},
    {23, {0x000008080000616C, 0, 0, false}},
    {24, {0x0000000000000001, 0, 0, false}},
    {25, {0x0000000000000003, 0, 0, false}},
    {26, {0x0808080861726762, 0, 0, false}},
    {27, {0x0000000800000061, 0, 0, false}},
    {28, {0x0000000000000005, 0, 0, false}},
    {29, {0x0000000000000004, 0, 0, false}},
    {32, {0x0000000000000007, 0, 0, false}},
    {33, {0x0000000000000008, 0, 0, true}},
    {34, {0x0000000000000009, 0, 0, false}},
    {35, {0x000000000000000A, 0, 0, true}},
    {36, {0x000000000000000B, 0, 0, false}},
    {37, {0x0002030300626772, 8, 0, false}},
    {38, {0x0000040400006C61, 8, 0, false}},
    {39, {0x000505060072676C, 9, 0, false}},
    {40, {0x0808080872676C78, 9, 0, false}},
    {41, {0x0808080872676261, 9, 0, false}},
    {42, {0x0A0A0A0272676261, 8, 0, false}},
    {43, {0x0A0A0A0262677261, 8, 0, false}},
    {44, {0x0A0A0A0262677261, 8, 0, false}},
    {45, {0x0000101000007267, 8, 0, false}},
    {46, {0x0000101000007267, 9, 0, false}},
    {47, {0x1010101072676261, 8, 0, false}},
    {48, {0x0000001000000072, 12, 0, false}},
    {49, {0x0000101000007267, 12, 0, false}},
    {50, {0x1010101072676261, 12, 0, false}},
    {51, {0x0000002000000072, 12, 0, false}},
    {52, {0x0000202000007267, 12, 0, false}},
    {53, {0x2020202072676261, 12, 0, false}},
    {54, {0x0000000000000006, 0, 0, false}},
    {64, {0x0000000800000061, 8, 0, false}},
    {65, {0x0000080800007267, 9, 0, false}},
    {66, {0x000000100000006C, 8, 0, false}},
    {67, {0x000000080000006C, 8, 0, false}},
    {68, {0x0000080800006C61, 8, 0, false}},
    {69, {0x0000000000000010, 0, 0, false}},
    {70, {0x0000000000000011, 0, 0, false}},
    {80, {0x2020202061626772, 12, 0, false}},
    {81, {0x2020202061626772, 10, 0, false}},
    {82, {0x2020202061626772, 11, 0, false}},
    {83, {0x0020202000626772, 12, 0, false}},
    {84, {0x0020202000626772, 10, 0, false}},
    {85, {0x0020202000626772, 11, 0, false}},
    {86, {0x1010101061626772, 12, 0, false}},
    {87, {0x1010101061626772, 4, 0, false}},
    {88, {0x1010101061626772, 6, 0, false}},
    {89, {0x1010101061626772, 5, 0, false}},
    {90, {0x1010101061626772, 7, 0, false}},
    {91, {0x0000202000006772, 12, 0, false}},
    {92, {0x0000202000006772, 10, 0, false}},
    {93, {0x0000202000006772, 11, 0, false}},
    {94, {0x020A0A0A61626772, 8, 0, false}},
    {95, {0x020A0A0A61626772, 10, 0, false}},
    {96, {0x000B0B0A00726762, 13, 0, false}},
    {97, {0x0808080861626772, 0, 0, false}},
    {98, {0x0808080861626772, 0, 1, false}},
    {99, {0x0808080861626772, 2, 0, false}},
    {100, {0x0808080861626772, 1, 0, false}},
    {101, {0x0808080861626772, 3, 0, false}},
    {102, {0x0000101000006772, 12, 0, false}},
    {103, {0x0000101000006772, 4, 0, false}},
    {104, {0x0000101000006772, 6, 0, false}},
    {105, {0x0000101000006772, 5, 0, false}},
    {106, {0x0000101000006772, 7, 0, false}},
    {107, {0x0000002000000072, 12, 0, false}},
    {108, {0x0000002000000072, 10, 0, false}},
    {109, {0x0000002000000072, 11, 0, false}},
    {110, {0x0000080800006772, 0, 0, false}},
    {111, {0x0000080800006772, 2, 0, false}},
    {112, {0x0000080800006772, 1, 0, false}},
    {113, {0x0000080800006772, 3, 0, false}},
    {114, {0x0000001000000072, 12, 0, false}},
    {115, {0x0000001000000072, 4, 0, false}},
    {116, {0x0000001000000072, 6, 0, false}},
    {117, {0x0000001000000072, 5, 0, false}},
    {118, {0x0000001000000072, 7, 0, false}},
    {119, {0x0000000800000072, 0, 0, false}},
    {120, {0x0000000800000072, 2, 0, false}},
    {121, {0x0000000800000072, 1, 0, false}},
    {122, {0x0000000800000072, 3, 0, false}},
    {123, {0x0000000800000072, 0, 0, false}},
    {124, {0x0000000000000012, 0, 0, false}},
    {125, {0x0000000000000013, 12, 0, false}},
    {126, {0x0000000000000014, 0, 0, false}},
    {127, {0x0000000000000015, 0, 0, false}},
    {128, {0x0000000000000007, 8, 0, false}},
    {129, {0x0000000000000007, 8, 1, false}},
    {130, {0x0000000000000009, 8, 0, false}},
    {131, {0x0000000000000009, 8, 1, false}},
    {132, {0x000000000000000B, 8, 0, false}},
    {133, {0x000000000000000B, 8, 1, false}},
    {134, {0x000000000000000C, 8, 1, false}},
    {135, {0x000000000000000C, 9, 0, false}},
    {136, {0x000000000000000D, 8, 0, false}},
    {137, {0x000000000000000D, 9, 0, false}},
    {144, {0x0808080878626772, 0, 1, false}},
    {145, {0x0808080861626772, 0, 1, false}},
    {146, {0x0808080861626772, 0, 1, true}},
    {147, {0x0005060500626772, 4, 1, false}},
    {148, {0x0105050561626772, 4, 1, false}},
    {149, {0x0404040461626772, 4, 1, false}},
    {150, {0x000000080000006C, 0, 1, false}},
    {151, {0x0808080878626772, 0, 0, false}},
    {152, {0x0808080861626772, 0, 0, false}},
    {153, {0x0808080861626772, 0, 0, true}},
    {154, {0x000000080000006C, 0, 0, false}},
    {155, {0x0000000800000061, 0, 0, false}},
    {156, {0x0000000000000012, 0, 0, false}},
    {157, {0x0808080862677278, 0, 1, false}},
    {158, {0x0808080862677261, 0, 1, false}},
    {159, {0x0808080862677261, 0, 1, true}},
    {160, {0x0505050162677261, 4, 1, false}},
    {161, {0x0404040462677261, 4, 1, false}},
    {162, {0x0808080862677278, 0, 0, false}},
    {163, {0x0808080862677261, 0, 0, false}},
    {164, {0x0808080862677261, 0, 0, true}},
    {165, {0x0808080878726762, 0, 1, false}},
    {166, {0x0808080861726762, 0, 1, false}},
    {167, {0x0808080861726762, 0, 1, true}},
    {168, {0x0005060500726762, 4, 1, false}},
    {169, {0x0105050561726762, 4, 1, false}},
    {170, {0x0404040478726762, 4, 1, false}},
    {171, {0x0808080878726762, 0, 0, false}},
    {172, {0x0808080861726762, 0, 0, false}},
    {173, {0x0808080861726762, 0, 0, true}},
    {174, {0x0808080872676278, 0, 1, false}},
    {175, {0x0808080872676261, 0, 1, false}},
    {176, {0x0808080872676261, 0, 1, true}},
    {177, {0x0505050172676261, 4, 1, false}},
    {178, {0x0404040472676278, 4, 1, false}},
    {179, {0x0808080872676278, 0, 0, false}},
    {180, {0x0808080872676261, 0, 0, false}},
    {181, {0x0808080872676261, 0, 0, true}},
};

/// APIs 2 and 4 write as 1 does, 5 as 3.
constexpr WrittenRow k_aWritten[] = {
    {1, {0x0808080861626772, 0, 0, false}, 18},
    {1, {0x0808080861726762, 0, 0, false}, 26},
    {1, {0x0008080800626772, 0, 0, false}, 21},
    {1, {0x0000000800000061, 0, 0, false}, 27},
    {1, {0x0000000800000069, 0, 0, false}, 22},
    {1, {0x0000080800006961, 0, 0, false}, 23},
    {1, {0x0005060500626772, 4, 0, false}, 19},
    {1, {0x0105050561626772, 4, 0, false}, 17},
    {1, {0x0105050578626772, 4, 0, false}, 20},
    {1, {0x0404040461626772, 4, 0, false}, 16},
    {1, {0x0000000000000000, 0, 0, false}, 24},
    {1, {0x0000000000000001, 0, 0, false}, 24},
    {1, {0x0000000000000002, 0, 0, false}, 25},
    {1, {0x0000000000000003, 0, 0, false}, 25},
    {1, {0x0000000000000004, 0, 0, false}, 29},
    {1, {0x0000000000000005, 0, 0, false}, 28},
    {1, {0x0000000000000006, 0, 0, false}, 54},
    {3, {0x0808080872676C78, 9, 0, false}, 40},
    {3, {0x0A0A0A0272676261, 9, 0, false}, 44},
    {3, {0x0808080872676261, 9, 0, false}, 41},
    {3, {0x0000080800007267, 9, 0, false}, 65},
    {3, {0x0000101000007267, 9, 0, false}, 46},
    {3, {0x000505060072676C, 9, 0, false}, 39},
    {3, {0x1010101072676261, 12, 0, false}, 50},
    {3, {0x2020202072676261, 12, 0, false}, 53},
    {3, {0x0000202000006772, 12, 0, false}, 52},
    {3, {0x0000001000000072, 12, 0, false}, 48},
    {3, {0x0000002000000072, 12, 0, false}, 51},
    {3, {0x0000101000007267, 12, 0, false}, 49},
    {3, {0x0A0A0A0262677261, 0, 0, false}, 43},
    {3, {0x0A0A0A0262677261, 4, 0, false}, 43},
    {3, {0x0A0A0A0262677261, 8, 0, false}, 43},
    {3, {0x0A0A0A0272676261, 0, 0, false}, 42},
    {3, {0x0A0A0A0272676261, 4, 0, false}, 42},
    {3, {0x0A0A0A0272676261, 8, 0, false}, 42},
    {3, {0x1010101072676261, 0, 0, false}, 47},
    {3, {0x1010101072676261, 4, 0, false}, 47},
    {3, {0x1010101072676261, 8, 0, false}, 47},
    {3, {0x0808080862677261, 0, 0, false}, 5},
    {3, {0x0808080862677261, 4, 0, false}, 5},
    {3, {0x0808080862677261, 8, 0, false}, 5},
    {3, {0x0203030862677261, 0, 0, false}, 6},
    {3, {0x0203030862677261, 4, 0, false}, 6},
    {3, {0x0203030862677261, 8, 0, false}, 6},
    {3, {0x0404040462677261, 0, 0, false}, 0},
    {3, {0x0404040462677261, 4, 0, false}, 0},
    {3, {0x0404040462677261, 8, 0, false}, 0},
    {3, {0x0505050162677261, 0, 0, false}, 1},
    {3, {0x0505050162677261, 4, 0, false}, 1},
    {3, {0x0505050162677261, 8, 0, false}, 1},
    {3, {0x0505050162677278, 0, 0, false}, 3},
    {3, {0x0505050162677278, 4, 0, false}, 3},
    {3, {0x0505050162677278, 8, 0, false}, 3},
    {3, {0x0008080800626772, 0, 0, false}, 4},
    {3, {0x0008080800626772, 4, 0, false}, 4},
    {3, {0x0008080800626772, 8, 0, false}, 4},
    {3, {0x0000101000007267, 0, 0, false}, 45},
    {3, {0x0000101000007267, 4, 0, false}, 45},
    {3, {0x0000101000007267, 8, 0, false}, 45},
    {3, {0x0002030300626772, 0, 0, false}, 37},
    {3, {0x0002030300626772, 4, 0, false}, 37},
    {3, {0x0002030300626772, 8, 0, false}, 37},
    {3, {0x0005060500626772, 0, 0, false}, 2},
    {3, {0x0005060500626772, 4, 0, false}, 2},
    {3, {0x0005060500626772, 8, 0, false}, 2},
    {3, {0x0000080800006C61, 0, 0, false}, 68},
    {3, {0x0000080800006C61, 4, 0, false}, 68},
    {3, {0x0000080800006C61, 8, 0, false}, 68},
    {3, {0x0000000800000061, 0, 0, false}, 64},
    {3, {0x0000000800000061, 4, 0, false}, 64},
    {3, {0x0000000800000061, 8, 0, false}, 64},
    {3, {0x000000080000006C, 0, 0, false}, 67},
    {3, {0x000000080000006C, 4, 0, false}, 67},
    {3, {0x000000080000006C, 8, 0, false}, 67},
    {3, {0x000000100000006C, 0, 0, false}, 66},
    {3, {0x000000100000006C, 4, 0, false}, 66},
    {3, {0x000000100000006C, 8, 0, false}, 66},
    {3, {0x0000040400006C61, 0, 0, false}, 38},
    {3, {0x0000040400006C61, 4, 0, false}, 38},
    {3, {0x0000040400006C61, 8, 0, false}, 38},
    {3, {0x0000000000000000, 0, 0, false}, 12},
    {3, {0x0000000000000001, 0, 0, false}, 12},
    {3, {0x0000000000000002, 0, 0, false}, 13},
    {3, {0x0000000000000003, 0, 0, false}, 13},
    {3, {0x0000000000000007, 0, 0, false}, 32},
    {3, {0x0000000000000008, 0, 0, false}, 33},
    {3, {0x0000000000000009, 0, 0, false}, 34},
    {3, {0x000000000000000A, 0, 0, false}, 35},
    {3, {0x000000000000000B, 0, 0, false}, 36},
    {3, {0x0000000000000010, 0, 0, false}, 69},
    {3, {0x0000000000000011, 0, 0, false}, 70},
    {6, {0x0000000000000014, 0, 0, false}, 126},
    {6, {0x0000000000000015, 0, 0, false}, 127},
    {6, {0x0000000000000007, 8, 0, false}, 128},
    {6, {0x0000000000000007, 8, 1, false}, 129},
    {6, {0x0000000000000009, 8, 0, false}, 130},
    {6, {0x0000000000000009, 8, 1, false}, 131},
    {6, {0x000000000000000B, 8, 0, false}, 132},
    {6, {0x000000000000000B, 8, 1, false}, 133},
    {6, {0x000000000000000C, 8, 1, false}, 134},
    {6, {0x000000000000000D, 8, 0, false}, 136},
    {6, {0x000000000000000C, 9, 0, false}, 135},
    {6, {0x000000000000000D, 9, 0, false}, 137},
    {6, {0x0000000800000072, 0, 0, false}, 119},
    {6, {0x0000080800006772, 0, 0, false}, 110},
    {6, {0x0808080861626772, 0, 0, false}, 97},
    {6, {0x0404040462677261, 4, 0, false}, 0},
    {6, {0x0505050162677261, 4, 0, false}, 1},
    {6, {0x0005060500626772, 4, 0, false}, 2},
    {6, {0x0505050162677278, 4, 0, false}, 3},
    {6, {0x0008080800626772, 8, 0, false}, 4},
    {6, {0x0808080862677261, 8, 0, false}, 5},
    {6, {0x0203030862677261, 4, 0, false}, 6},
    {6, {0x0000000800000069, 0, 0, false}, 7},
    {6, {0x0000080800006961, 4, 0, false}, 8},
    {6, {0x0404040461626772, 4, 0, false}, 16},
    {6, {0x0105050561626772, 4, 0, false}, 17},
    {6, {0x0105050578626772, 4, 0, false}, 20},
    {6, {0x0008080800626772, 0, 0, false}, 21},
    {6, {0x000000080000006C, 0, 0, false}, 22},
    {6, {0x000008080000616C, 0, 0, false}, 23},
    {6, {0x0808080861726762, 0, 0, false}, 26},
    {6, {0x0000000800000061, 0, 0, false}, 27},
    {6, {0x0002030300626772, 8, 0, false}, 37},
    {6, {0x0000040400006C61, 8, 0, false}, 38},
    {6, {0x0A0A0A0272676261, 8, 0, false}, 42},
    {6, {0x0A0A0A0262677261, 8, 0, false}, 43},
    {6, {0x0000101000007267, 8, 0, false}, 45},
    {6, {0x1010101072676261, 8, 0, false}, 47},
    {6, {0x0000001000000072, 12, 0, false}, 48},
    {6, {0x0000101000007267, 12, 0, false}, 49},
    {6, {0x1010101072676261, 12, 0, false}, 50},
    {6, {0x0000002000000072, 12, 0, false}, 51},
    {6, {0x0000202000007267, 12, 0, false}, 52},
    {6, {0x2020202072676261, 12, 0, false}, 53},
    {6, {0x0000000800000061, 8, 0, false}, 64},
    {6, {0x000000100000006C, 8, 0, false}, 66},
    {6, {0x000000080000006C, 8, 0, false}, 67},
    {6, {0x0000080800006C61, 8, 0, false}, 68},
    {6, {0x2020202061626772, 12, 0, false}, 80},
    {6, {0x2020202061626772, 10, 0, false}, 81},
    {6, {0x2020202061626772, 11, 0, false}, 82},
    {6, {0x0020202000626772, 12, 0, false}, 83},
    {6, {0x0020202000626772, 10, 0, false}, 84},
    {6, {0x0020202000626772, 11, 0, false}, 85},
    {6, {0x1010101061626772, 12, 0, false}, 86},
    {6, {0x1010101061626772, 4, 0, false}, 87},
    {6, {0x1010101061626772, 6, 0, false}, 88},
    {6, {0x1010101061626772, 5, 0, false}, 89},
    {6, {0x1010101061626772, 7, 0, false}, 90},
    {6, {0x0000202000006772, 12, 0, false}, 91},
    {6, {0x0000202000006772, 10, 0, false}, 92},
    {6, {0x0000202000006772, 11, 0, false}, 93},
    {6, {0x020A0A0A61626772, 8, 0, false}, 94},
    {6, {0x020A0A0A61626772, 10, 0, false}, 95},
    {6, {0x0808080861626772, 0, 1, false}, 98},
    {6, {0x0808080861626772, 2, 0, false}, 99},
    {6, {0x0808080861626772, 1, 0, false}, 100},
    {6, {0x0808080861626772, 3, 0, false}, 101},
    {6, {0x0000101000006772, 12, 0, false}, 102},
    {6, {0x0000101000006772, 4, 0, false}, 103},
    {6, {0x0000101000006772, 6, 0, false}, 104},
    {6, {0x0000101000006772, 5, 0, false}, 105},
    {6, {0x0000101000006772, 7, 0, false}, 106},
    {6, {0x0000002000000072, 10, 0, false}, 108},
    {6, {0x0000002000000072, 11, 0, false}, 109},
    {6, {0x0000080800006772, 2, 0, false}, 111},
    {6, {0x0000080800006772, 1, 0, false}, 112},
    {6, {0x0000080800006772, 3, 0, false}, 113},
    {6, {0x0000001000000072, 4, 0, false}, 115},
    {6, {0x0000001000000072, 6, 0, false}, 116},
    {6, {0x0000001000000072, 5, 0, false}, 117},
    {6, {0x0000001000000072, 7, 0, false}, 118},
    {6, {0x0000000800000072, 2, 0, false}, 120},
    {6, {0x0000000800000072, 1, 0, false}, 121},
    {6, {0x0000000800000072, 3, 0, false}, 122},
    {6, {0x0808080878626772, 0, 1, false}, 144},
    {6, {0x0808080861626772, 0, 1, true}, 146},
    {6, {0x0005060500626772, 4, 1, false}, 147},
    {6, {0x0105050561626772, 4, 1, false}, 148},
    {6, {0x0404040461626772, 4, 1, false}, 149},
    {6, {0x000000080000006C, 0, 1, false}, 150},
    {6, {0x0808080878626772, 0, 0, false}, 151},
    {6, {0x0808080861626772, 0, 0, true}, 153},
    {6, {0x0808080862677278, 0, 1, false}, 157},
    {6, {0x0808080862677261, 0, 1, false}, 158},
    {6, {0x0808080862677261, 0, 1, true}, 159},
    {6, {0x0505050162677261, 4, 1, false}, 160},
    {6, {0x0404040462677261, 4, 1, false}, 161},
    {6, {0x0808080862677278, 0, 0, false}, 162},
    {6, {0x0808080862677261, 0, 0, false}, 163},
    {6, {0x0808080862677261, 0, 0, true}, 164},
    {6, {0x0808080878726762, 0, 1, false}, 165},
    {6, {0x0808080861726762, 0, 1, false}, 166},
    {6, {0x0808080861726762, 0, 1, true}, 167},
    {6, {0x0005060500726762, 4, 1, false}, 168},
    {6, {0x0105050561726762, 4, 1, false}, 169},
    {6, {0x0404040478726762, 4, 1, false}, 170},
    {6, {0x0808080878726762, 0, 0, false}, 171},
    {6, {0x0808080861726762, 0, 0, true}, 173},
    {6, {0x0808080872676278, 0, 1, false}, 174},
    {6, {0x0808080872676261, 0, 1, false}, 175},
    {6, {0x0808080872676261, 0, 1, true}, 176},
    {6, {0x0505050172676261, 4, 1, false}, 177},
    {6, {0x0404040472676278, 4, 1, false}, 178},
    {6, {0x0808080872676278, 0, 0, false}, 179},
    {6, {0x0808080872676261, 0, 0, false}, 180},
    {6, {0x0808080872676261, 0, 0, true}, 181},
    {7, {0x0000000000000012, 0, 0, false}, 156},
    {7, {0x0808080861626772, 0, 0, false}, 152},
    {7, {0x0808080861726762, 0, 0, false}, 172},
    {7, {0x0808080862677261, 0, 0, false}, 163},
    {7, {0x0808080872676261, 0, 0, false}, 180},
    {7, {0x0808080872676278, 0, 0, false}, 179},
    {7, {0x0808080878626772, 0, 0, false}, 151},
    {7, {0x0808080878726762, 0, 0, false}, 171},
    {7, {0x0808080862677278, 0, 0, false}, 162},
    {7, {0x0000000800000061, 0, 0, false}, 155},
    {7, {0x000000080000006C, 0, 0, false}, 154},
    {7, {0x0808080861626772, 0, 0, true}, 153},
    {7, {0x0808080861726762, 0, 0, true}, 173},
    {7, {0x0808080862677261, 0, 0, true}, 164},
    {7, {0x0808080872676261, 0, 0, true}, 181},
    {7, {0x0808080861626772, 0, 1, false}, 145},
    {7, {0x0808080861726762, 0, 1, false}, 166},
    {7, {0x0808080862677261, 0, 1, false}, 158},
    {7, {0x0808080872676261, 0, 1, false}, 175},
    {7, {0x0808080872676278, 0, 1, false}, 174},
    {7, {0x0808080878626772, 0, 1, false}, 144},
    {7, {0x0808080878726762, 0, 1, false}, 165},
    {7, {0x0808080862677278, 0, 1, false}, 157},
    {7, {0x000000080000006C, 0, 1, false}, 150},
    {7, {0x0808080861626772, 0, 1, true}, 146},
    {7, {0x0808080861726762, 0, 1, true}, 167},
    {7, {0x0808080862677261, 0, 1, true}, 159},
    {7, {0x0808080872676261, 0, 1, true}, 176},
    {7, {0x0005060500626772, 4, 1, false}, 147},
    {7, {0x0005060500726762, 4, 1, false}, 168},
    {7, {0x0105050561626772, 4, 1, false}, 148},
    {7, {0x0105050561726762, 4, 1, false}, 169},
    {7, {0x0404040461626772, 4, 1, false}, 149},
    {7, {0x0404040478726762, 4, 1, false}, 170},
    {7, {0x0505050162677261, 4, 1, false}, 160},
    {7, {0x0505050172676261, 4, 1, false}, 177},
    {7, {0x0404040462677261, 4, 1, false}, 161},
    {7, {0x0404040472676278, 4, 1, false}, 178},
};
// clang-format on

const ReadRow* findRead(uint32_t uiType)
{
    const auto* pRow = std::find_if(std::begin(k_aRead), std::end(k_aRead), [&](const ReadRow& row) { return row.uiType == uiType; });
    return pRow != std::end(k_aRead) ? pRow : nullptr;
}

PixelEncoding typed(MOXPixelWord format, EMOXTChannelType eType, EMOXTColourSpace eSpace = eCS_Linear, bool bPreMultiplied = false)
{
    return {format, eType, eSpace, bPreMultiplied};
}

} // namespace

TEST(LegacyTypes, EveryNumberOfTheTableGivesItsEncoding)
{
    EXPECT_EQ(154u, std::size(k_aRead));
    for (const ReadRow& row : k_aRead)
        EXPECT_EQ(encodingOf(row.numbers), legacyTypeToFormat(row.uiType)) << row.uiType;
}

TEST(LegacyTypes, NumbersThatNameNoTypeGiveNoFormatAndChannelType14)
{
    for (uint32_t i = 0; i < 300; ++i)
    {
        if (findRead(i) == nullptr)
        {
            EXPECT_EQ(encodingOf({51, 14, 0, false}), legacyTypeToFormat(i)) << i;
        }
    }
    EXPECT_EQ(encodingOf({51, 14, 0, false}), legacyTypeToFormat(0xFFFFFFFF));
}

TEST(LegacyTypes, Type12IsFormat1)
{
    EXPECT_EQ(typed(ePF_MOXTC_2bpp_RGBA, eCT_UnsignedNormalisedByte), legacyTypeToFormat(12));
}

TEST(LegacyTypes, EveryEncodingOfAnApiIsWrittenAsItsType)
{
    for (const WrittenRow& row : k_aWritten)
        EXPECT_EQ(row.iType, formatToLegacyType(encodingOf(row.numbers), row.uiApi)) << row.uiApi << ": " << row.numbers.uiWord;
}

TEST(LegacyTypes, TheApisOfAFamilyWriteAlike)
{
    for (const WrittenRow& row : k_aWritten)
    {
        const PixelEncoding encoding = encodingOf(row.numbers);
        const int32_t iGL = formatToLegacyType(encoding, 1);
        EXPECT_EQ(iGL, formatToLegacyType(encoding, 2));
        EXPECT_EQ(iGL, formatToLegacyType(encoding, 4));
        EXPECT_EQ(formatToLegacyType(encoding, 3), formatToLegacyType(encoding, 5));
    }
}

TEST(LegacyTypes, OtherApisWriteNothing)
{
    for (const WrittenRow& row : k_aWritten)
        for (const uint32_t uiApi : {0u, 8u, 9u, 0xFFFFFFFFu})
            EXPECT_EQ(-1, formatToLegacyType(encodingOf(row.numbers), uiApi)) << uiApi;
}

TEST(LegacyTypes, WhatIsWrittenIsReadBackAsItWasButForTheRowsThatDiffer)
{
    // api 6 and 7 ask for everything of a layout, so all of it comes back.
    for (const WrittenRow& row : k_aWritten)
    {
        if (row.uiApi >= 6)
        {
            EXPECT_EQ(encodingOf(row.numbers), legacyTypeToFormat(static_cast<uint32_t>(row.iType))) << row.iType;
        }
    }
    EXPECT_EQ(layout("l", 8), legacyTypeToFormat(22).pixelFormat);
    EXPECT_EQ(layout("la", 8, 8), legacyTypeToFormat(23).pixelFormat);
    EXPECT_EQ(layout("gr", 32, 32), legacyTypeToFormat(52).pixelFormat);
    EXPECT_EQ(layout("argb", 2, 10, 10, 10), legacyTypeToFormat(44).pixelFormat);
    EXPECT_EQ(MOXPixelWord(ePF_MOXTC_2bpp_RGBA), legacyTypeToFormat(24).pixelFormat);
}

TEST(LegacyTypes, TheOlderApisAskForNeitherColourSpaceNorPreMultiplication)
{
    for (const WrittenRow& row : k_aWritten)
    {
        if (row.uiApi > 3)
            continue;
        PixelEncoding encoding = encodingOf(row.numbers);
        encoding.eColourSpace = eCS_sRGB;
        EXPECT_EQ(row.iType, formatToLegacyType(encoding, row.uiApi));
        encoding.bPreMultiplied = true;
        EXPECT_EQ(row.iType, formatToLegacyType(encoding, row.uiApi));
    }
}

TEST(LegacyTypes, NumberedFormatsAreNotAskedForTheirChannelTypeButTheBCFormatsOfApi6)
{
    for (const WrittenRow& row : k_aWritten)
    {
        PixelEncoding encoding = encodingOf(row.numbers);
        if (!encoding.pixelFormat.isCompressed())
            continue;
        const bool bAsked = row.uiApi == 6 && encoding.pixelFormat.getFormat() <= ePF_BC5;
        encoding.eChannelType = eCT_SignedFloatingPoint;
        EXPECT_EQ(bAsked ? -1 : row.iType, formatToLegacyType(encoding, row.uiApi)) << row.iType;
    }
}

TEST(LegacyTypes, Api6AsksTheColourSpaceOfBC1ToBC3Only)
{
    EXPECT_EQ(134, formatToLegacyType(typed(ePF_BC4, eCT_UnsignedNormalisedInteger, eCS_Linear), 6));
    EXPECT_EQ(136, formatToLegacyType(typed(ePF_BC5, eCT_UnsignedNormalisedInteger, eCS_sRGB), 6));
    EXPECT_EQ(135, formatToLegacyType(typed(ePF_BC4, eCT_SignedNormalisedInteger, eCS_sRGB), 6));
    EXPECT_EQ(126, formatToLegacyType(typed(ePF_2_Planar_RGBG_8_8_8_8, eCT_UnsignedNormalisedByte, eCS_sRGB), 6));
    EXPECT_EQ(129, formatToLegacyType(typed(ePF_BC1, eCT_UnsignedNormalisedInteger, eCS_sRGB), 6));
}

TEST(LegacyTypes, WhereSeveralNumbersHaveOneRowTheLowestIsWritten)
{
    EXPECT_EQ(43, formatToLegacyType(typed(layout("argb", 2, 10, 10, 10), eCT_UnsignedNormalisedInteger), 3)); // 43, 44
    EXPECT_EQ(48, formatToLegacyType(typed(layout("r", 16), eCT_SignedFloatingPoint), 6));                     // 48, 114
    EXPECT_EQ(51, formatToLegacyType(typed(layout("r", 32), eCT_SignedFloatingPoint), 6));                     // 51, 107
    EXPECT_EQ(98, formatToLegacyType(typed(k_RGBA8, eCT_UnsignedNormalisedByte, eCS_sRGB), 6));                // 98, 145
    EXPECT_EQ(119, formatToLegacyType(typed(layout("r", 8), eCT_UnsignedNormalisedByte), 6));                  // 119, 123
    EXPECT_EQ(97, formatToLegacyType(typed(k_RGBA8, eCT_UnsignedNormalisedByte), 6)); // of 18, 97, 152 the api's own
}

TEST(LegacyTypes, EncodingsWithoutATypeOfTheApiAreRefused)
{
    const auto eByte = eCT_UnsignedNormalisedByte;
    const auto eShort = eCT_UnsignedNormalisedShort;
    for (uint32_t uiApi = 1; uiApi <= 7; ++uiApi)
    {
        for (const EMOXTPixelFormat eFormat : {ePF_BC6, ePF_BC7, ePF_ETC2_RGB, ePF_EAC_R11, ePF_ASTC_4x4, ePF_Count})
            EXPECT_EQ(-1, formatToLegacyType(typed(eFormat, eByte), uiApi)) << eFormat;
        EXPECT_EQ(-1, formatToLegacyType(typed(layout("rgba", 9, 9, 9, 5), eByte), uiApi));
    }
    // Each first as it is written.
    EXPECT_EQ(18, formatToLegacyType(typed(k_RGBA8, eByte), 1));
    EXPECT_EQ(-1, formatToLegacyType(typed(k_RGBA8, eShort), 1));
    EXPECT_EQ(-1, formatToLegacyType(typed(k_RGBA8, eCT_SignedNormalisedByte), 1));
    EXPECT_EQ(-1, formatToLegacyType(typed(layout("l", 8), eByte), 1));
    EXPECT_EQ(-1, formatToLegacyType(typed(ePF_BC1, eByte), 1));
    EXPECT_EQ(-1, formatToLegacyType(typed(ePF_ETC1, eByte), 3));
    EXPECT_EQ(-1, formatToLegacyType(typed(k_RGBA8, eByte), 3));
    EXPECT_EQ(-1, formatToLegacyType(typed(layout("argb", 8, 8, 8, 8), eCT_UnsignedByte), 3));
    EXPECT_EQ(-1, formatToLegacyType(typed(layout("gr", 32, 32), eCT_SignedFloatingPoint), 3));
    EXPECT_EQ(-1, formatToLegacyType(typed(layout("bgr", 10, 11, 11), eCT_UnsignedFloatingPoint), 6));
    EXPECT_EQ(-1, formatToLegacyType(typed(layout("abgr", 8, 8, 8, 8), eCT_SignedNormalisedInteger), 6));
    EXPECT_EQ(-1, formatToLegacyType(typed(ePF_BC1, eByte), 6));
    EXPECT_EQ(-1, formatToLegacyType(typed(ePF_Shared_Exponent_RGB999_E5, eCT_SignedFloatingPoint), 6));
    EXPECT_EQ(-1, formatToLegacyType(typed(layout("rgbx", 8, 8, 8, 8), eByte, eCS_Linear, true), 7));
    EXPECT_EQ(-1, formatToLegacyType(typed(layout("a", 8), eByte, eCS_sRGB), 7));
    EXPECT_EQ(-1, formatToLegacyType(typed(layout("rgb", 5, 6, 5), eShort, eCS_Linear), 7));
    EXPECT_EQ(-1, formatToLegacyType(typed(layout("rgb", 5, 6, 5), eShort, eCS_sRGB, true), 7));
}
