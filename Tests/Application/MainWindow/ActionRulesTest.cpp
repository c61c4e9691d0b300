#include "MainWindow/ActionRules.h"

#include <set>
#include <string>

#include <gtest/gtest.h>

namespace
{

const ActionRule& find(const std::string& strName)
{
    for (const ActionRule& rule : getActionRules())
        if (rule.pName == strName)
            return rule;
    throw std::runtime_error("no rule " + strName);
}

bool holds(EEnableRule eRule, const ActiveState& state)
{
    return isAllowed({"", eRule, true}, state);
}

ActiveState single()
{
    ActiveState state;
    state.bHasView = true;
    return state;
}

ActiveState difference()
{
    ActiveState state = single();
    state.bIsDiff = true;
    return state;
}

TEST(ActionRules, NameEachCommandOnce)
{
    std::set<std::string> names;
    for (const ActionRule& rule : getActionRules())
        EXPECT_TRUE(names.insert(rule.pName).second) << rule.pName;
    EXPECT_EQ(37u, names.size()); // 36 of the form less the two that are in no menu, and three menus
}

TEST(ActionRules, OfWhatNeedsNothingAlwaysHold)
{
    EXPECT_TRUE(holds(EEnableRule::eAlways, {}));
    EXPECT_TRUE(holds(EEnableRule::eAlways, single()));
    EXPECT_TRUE(holds(EEnableRule::eAlways, difference()));
}

TEST(ActionRules, OfAnyViewHoldForSingleAndDifferenceViews)
{
    EXPECT_FALSE(holds(EEnableRule::eAnyView, {}));
    EXPECT_TRUE(holds(EEnableRule::eAnyView, single()));
    EXPECT_TRUE(holds(EEnableRule::eAnyView, difference()));
}

TEST(ActionRules, OfSingleViewsDoNotHoldForDifferences)
{
    EXPECT_FALSE(holds(EEnableRule::eSingleView, {}));
    EXPECT_TRUE(holds(EEnableRule::eSingleView, single()));
    EXPECT_FALSE(holds(EEnableRule::eSingleView, difference()));
    EXPECT_FALSE(holds(EEnableRule::eDifferenceView, {}));
    EXPECT_FALSE(holds(EEnableRule::eDifferenceView, single()));
    EXPECT_TRUE(holds(EEnableRule::eDifferenceView, difference()));
}

TEST(ActionRules, OfUndoAndRedoWantASingleViewAndItsFlag)
{
    for (const bool bUndo : {false, true})
        for (const bool bRedo : {false, true})
        {
            ActiveState state = single();
            state.bCanUndo = bUndo;
            state.bCanRedo = bRedo;
            EXPECT_EQ(bUndo, holds(EEnableRule::eUndo, state));
            EXPECT_EQ(bRedo, holds(EEnableRule::eRedo, state));
            state.bIsDiff = true;
            EXPECT_FALSE(holds(EEnableRule::eUndo, state));
            EXPECT_FALSE(holds(EEnableRule::eRedo, state));
        }
}

TEST(ActionRules, OfTheSecondTextureOfAComparisonWantAnotherThanTheFirst)
{
    ActiveState state = single();
    EXPECT_FALSE(holds(EEnableRule::eOtherThanInput, state));
    state.bDiffInputPending = true;
    EXPECT_TRUE(holds(EEnableRule::eOtherThanInput, state));
    state.bDiffInputIsActive = true;
    EXPECT_FALSE(holds(EEnableRule::eOtherThanInput, state));
    state.bDiffInputIsActive = false;
    state.bIsDiff = true;
    EXPECT_FALSE(holds(EEnableRule::eOtherThanInput, state));
    state = {};
    state.bDiffInputPending = true;
    EXPECT_FALSE(holds(EEnableRule::eOtherThanInput, state));
}

TEST(ActionRules, KeepDisabledWhatIsNotBuiltYet)
{
    for (const char* pName : {"Act_New", "Act_Create_Cube_Map", "Act_Create_Array", "Act_Font_To_Bitmap", "Act_Wrap_Raw_Data", "Act_Errors",
                              "Act_LeftDiff", "Act_RightDiff", "Act_Updates"})
        for (ActiveState state : {ActiveState(), single(), difference()})
        {
            state.bDiffInputPending = true;
            EXPECT_FALSE(isAllowed(find(pName), state)) << pName;
        }
}

TEST(ActionRules, GiveEachCommandItsOwn)
{
    using Rule = EEnableRule;
    const std::pair<Rule, std::set<std::string>> aExpected[] = {
        {Rule::eAlways,
         {"Act_New", "Act_Open", "Act_Create_Cube_Map", "Act_Create_Array", "Act_Font_To_Bitmap", "Act_Wrap_Raw_Data", "Act_Exit",
          "Act_Align2", "Act_Align4", "Act_Align8", "Act_Tile_Windows", "Act_Cascade_Windows", "Act_Fit_Window", "Act_Help",
          "Act_MOXFileFormatSpec", "Act_Feedback", "Act_Updates", "Act_About"}},
        {Rule::eSingleView,
         {"Act_Reload", "Act_Save", "Act_Save_As", "Act_Save_Legacy", "Act_Encode", "Act_LeftDiff", "Menu_Edit", "Menu_Align"}},
        {Rule::eAnyView,
         {"Act_Save_Image", "Act_Close", "Act_Close_All", "Act_Show_Grid", "Act_Change_BG_Colour", "Act_Change_Grid_Size", "Menu_Window"}},
        {Rule::eUndo, {"Act_Undo"}},
        {Rule::eRedo, {"Act_Redo"}},
        {Rule::eOtherThanInput, {"Act_RightDiff"}},
        {Rule::eDifferenceView, {"Act_Errors"}},
    };
    for (const auto& [eRule, names] : aExpected)
        for (const std::string& strName : names)
            EXPECT_EQ(static_cast<uint32_t>(eRule), static_cast<uint32_t>(find(strName).eRule)) << strName;
}

} // namespace
