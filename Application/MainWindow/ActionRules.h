#pragma once

#include <cstdint>
#include <vector>

/// When a command may be given, for what is open.
enum class EEnableRule : uint32_t
{
    eAlways,
    eAnyView,        ///< any window is active
    eSingleView,     ///< the active window shows one texture
    eUndo,           ///< ... which can be taken back one step
    eRedo,           ///< ... which can be brought forward again
    eOtherThanInput, ///< a comparison waits for its second texture, and the active window is another single one than its first
    eDifferenceView, ///< the active window shows a comparison
};

/// One command or menu of the main window's form.
struct ActionRule
{
    const char* pName; ///< object name in the form
    EEnableRule eRule;
    bool bBuilt; ///< false: what it leads to is not there yet, so it stays disabled whatever the rule says
};

/// What the rules are about.
struct ActiveState
{
    bool bHasView = false;
    bool bIsDiff = false;  ///< the view shows a comparison
    bool bCanUndo = false; ///< only counts for a single view, as does the next
    bool bCanRedo = false;
    bool bDiffInputPending = false;  ///< a comparison waits for its second texture
    bool bDiffInputIsActive = false; ///< its first texture is that of the active window
};

/// All commands and menus that are ever disabled or could be, in the order of the form.
[[nodiscard]] const std::vector<ActionRule>& getActionRules();

[[nodiscard]] bool isAllowed(const ActionRule& rule, const ActiveState& state);
