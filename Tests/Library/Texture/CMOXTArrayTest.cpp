#include "Texture/CMOXTArray.h"

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <type_traits>

using namespace moxtexture;

namespace
{

CMOXTArray<int> countTo(int iCount)
{
    CMOXTArray<int> array;
    for (int i = 1; i <= iCount; ++i)
        array.append(i);
    return array;
}

/// An element whose arrays get no memory while bRefuse is set.
struct RefusedElement
{
    int iValue = 0;

    static bool bRefuse;

    static void* operator new[](size_t uiSize, const std::nothrow_t&) noexcept
    {
        return bRefuse ? nullptr : ::operator new[](uiSize, std::nothrow);
    }
    static void operator delete[](void* p) { ::operator delete[](p); }
    static void operator delete[](void* p, const std::nothrow_t&) noexcept { ::operator delete[](p); }
};
bool RefusedElement::bRefuse = false;

struct Refusal
{
    Refusal() { RefusedElement::bRefuse = true; }
    ~Refusal() { RefusedElement::bRefuse = false; }
};

} // namespace

TEST(MoxtArray, StartsEmptyWithRoomForSixteen)
{
    const CMOXTArray<int> array;
    EXPECT_EQ(0u, array.getSize());
    EXPECT_EQ(16u, array.getCapacity());
}

TEST(MoxtArray, HasAVirtualDestructor)
{
    EXPECT_TRUE(std::has_virtual_destructor_v<CMOXTArray<int>>);
}

TEST(MoxtArray, AppendGivesTheIndexOfTheNewElement)
{
    CMOXTArray<std::string> array;
    EXPECT_EQ(0u, array.append("a"));
    EXPECT_EQ(1u, array.append("b"));
    EXPECT_EQ(2u, array.getSize());
    EXPECT_EQ("a", array[0]);
    EXPECT_EQ("b", array[1]);
}

TEST(MoxtArray, DoublesWhenFullAndKeepsItsElements)
{
    EXPECT_EQ(16u, countTo(16).getCapacity());
    EXPECT_EQ(32u, countTo(17).getCapacity());
    EXPECT_EQ(32u, countTo(32).getCapacity());
    const CMOXTArray<int> array = countTo(33);
    EXPECT_EQ(64u, array.getCapacity());
    ASSERT_EQ(33u, array.getSize());
    for (int i = 0; i < 33; ++i)
        EXPECT_EQ(i + 1, array[static_cast<uint32_t>(i)]);
}

TEST(MoxtArray, ReserveGrowsToTheCountOrTheDoubleWhicheverIsLarger)
{
    CMOXTArray<int> array = countTo(3);
    array.reserve(16);
    EXPECT_EQ(16u, array.getCapacity());
    array.reserve(17);
    EXPECT_EQ(32u, array.getCapacity());
    array.reserve(100);
    EXPECT_EQ(100u, array.getCapacity());
    array.reserve(5);
    EXPECT_EQ(100u, array.getCapacity());
    ASSERT_EQ(3u, array.getSize());
    EXPECT_EQ(3, array[2]);
}

TEST(MoxtArray, ACopyHasTheCapacityAndItsOwnElements)
{
    CMOXTArray<int> array = countTo(17);
    const CMOXTArray<int> copy(array);
    array[0] = 99;
    EXPECT_EQ(17u, copy.getSize());
    EXPECT_EQ(32u, copy.getCapacity());
    EXPECT_EQ(1, copy[0]);
    EXPECT_EQ(17, copy[16]);
}

TEST(MoxtArray, AssignmentFollowsTheSourceInSizeAndCapacityDownToo)
{
    CMOXTArray<int> large = countTo(40);
    const CMOXTArray<int> small = countTo(2);
    large = small;
    EXPECT_EQ(2u, large.getSize());
    EXPECT_EQ(16u, large.getCapacity());
    EXPECT_EQ(2, large[1]);
}

TEST(MoxtArray, AssignmentFromItselfDoesNothing)
{
    CMOXTArray<int> array = countTo(20);
    const int* pFirst = &array[0];
    const CMOXTArray<int>& same = array;
    array = same;
    EXPECT_EQ(pFirst, &array[0]);
    EXPECT_EQ(20u, array.getSize());
    EXPECT_EQ(20, array[19]);
}

TEST(MoxtArray, MayBeUsedAgainAfterItWasMoved)
{
    CMOXTArray<int> array = countTo(3);
    const CMOXTArray<int> target = std::move(array);
    EXPECT_EQ(3u, target.getSize());
    EXPECT_EQ(0u, array.getSize()); // NOLINT(bugprone-use-after-move,clang-analyzer-cplusplus.Move): that it is empty is what is tested
    EXPECT_EQ(0u, array.append(7));
    EXPECT_EQ(1u, array.append(8));
    EXPECT_EQ(7, array[0]);
    EXPECT_EQ(8, array[1]);
}

TEST(MoxtArray, MayBeGivenItsOwnElementWhereItGrows)
{
    CMOXTArray<int> array = countTo(16); // full
    EXPECT_EQ(16u, array.append(array[3]));
    EXPECT_EQ(array[3], array[16]);
    EXPECT_EQ(32u, array.getCapacity());
}

TEST(MoxtArray, StaysAsItIsWhereMemoryIsRefused)
{
    CMOXTArray<RefusedElement> array;
    array.append({5});
    CMOXTArray<RefusedElement> other;
    for (int i = 0; i < 16; ++i)
        other.append({i});

    const Refusal refusal;
    other.reserve(17);
    EXPECT_EQ(16u, other.getCapacity());
    EXPECT_EQ(16u, other.append({99})); // dropped
    EXPECT_EQ(16u, other.getSize());
    array = other;
    ASSERT_EQ(1u, array.getSize());
    EXPECT_EQ(5, array[0].iValue);
}
