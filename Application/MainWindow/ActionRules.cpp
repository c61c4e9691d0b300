#include "MainWindow/ActionRules.h"

namespace
{

using Rule = EEnableRule;

bool holds(EEnableRule eRule, const ActiveState& state)
{
    const bool bSingle = state.bHasView && !state.bIsDiff;
    switch (eRule)
    {
    case Rule::eAlways:
        return true;
    case Rule::eAnyView:
        return state.bHasView;
    case Rule::eSingleView:
        return bSingle;
    case Rule::eUndo:
        return bSingle && state.bCanUndo;
    case Rule::eRedo:
        return bSingle && state.bCanRedo;
    case Rule::eOtherThanInput:
        return bSingle && state.bDiffInputPending && !state.bDiffInputIsActive;
    case Rule::eDifferenceView:
        return state.bHasView && state.bIsDiff;
    }
    return false;
}

} // namespace

const std::vector<ActionRule>& getActionRules()
{
    // clang-format off
    static const std::vector<ActionRule> aRules = {
        //  name                     rule                    built
        {"Act_New",                  Rule::eAlways,          false},
        {"Act_Open",                 Rule::eAlways,          true},
        {"Act_Create_Cube_Map",      Rule::eAlways,          false},
        {"Act_Create_Array",         Rule::eAlways,          false},
        {"Act_Font_To_Bitmap",       Rule::eAlways,          false},
        {"Act_Wrap_Raw_Data",        Rule::eAlways,          false},
        {"Act_Reload",               Rule::eSingleView,      true},
        {"Act_Save",                 Rule::eSingleView,      true},
        {"Act_Save_As",              Rule::eSingleView,      true},
        {"Act_Save_Legacy",          Rule::eSingleView,      true},
        {"Act_Save_Image",           Rule::eAnyView,         true},
        {"Act_Close",                Rule::eAnyView,         true},
        {"Act_Close_All",            Rule::eAnyView,         true},
        {"Act_Exit",                 Rule::eAlways,          true},
        {"Menu_Edit",                Rule::eSingleView,      true},
        {"Act_Undo",                 Rule::eUndo,            true},
        {"Act_Redo",                 Rule::eRedo,            true},
        {"Act_Encode",               Rule::eSingleView,      true},
        {"Menu_Align",               Rule::eSingleView,      true},
        {"Act_Align2",               Rule::eAlways,          true}, // these three are reached through their menu alone
        {"Act_Align4",               Rule::eAlways,          true},
        {"Act_Align8",               Rule::eAlways,          true},
        {"Act_Show_Grid",            Rule::eAnyView,         true},
        {"Act_Change_Grid_Size",     Rule::eAnyView,         true},
        {"Act_Change_BG_Colour",     Rule::eAnyView,         true},
        {"Act_Errors",               Rule::eDifferenceView,  false},
        {"Act_LeftDiff",             Rule::eSingleView,      false},
        {"Act_RightDiff",            Rule::eOtherThanInput,  false},
        {"Menu_Window",              Rule::eAnyView,         true},
        {"Act_Tile_Windows",         Rule::eAlways,          true}, // and these
        {"Act_Cascade_Windows",      Rule::eAlways,          true},
        {"Act_Fit_Window",           Rule::eAlways,          true},
        {"Act_Help",                 Rule::eAlways,          true},
        {"Act_MOXFileFormatSpec",    Rule::eAlways,          true},
        {"Act_Feedback",             Rule::eAlways,          true},
        {"Act_Updates",              Rule::eAlways,          false},
        {"Act_About",                Rule::eAlways,          true},
    };
    // clang-format on
    return aRules;
}

bool isAllowed(const ActionRule& rule, const ActiveState& state)
{
    return rule.bBuilt && holds(rule.eRule, state);
}
