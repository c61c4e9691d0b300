#pragma once

#include <gtest/gtest.h>

#include <hwy/targets.h>

/// Runs a test body once for every instruction set that this processor has and the vector code was compiled for, so that
/// run-time dispatch chooses each of them in turn, not only the best.
///
///     forEachInstructionSet([&] { EXPECT_EQ(expected, BlendRowSimd(...)); });
template <typename Body>
void forEachInstructionSet(Body body)
{
    for (const int64_t i64Target : hwy::SupportedAndGeneratedTargets())
    {
        SCOPED_TRACE(hwy::TargetName(i64Target));
        hwy::SetSupportedTargetsForTest(i64Target);
        hwy::GetChosenTarget().Update(hwy::SupportedTargets());
        body();
    }
    hwy::SetSupportedTargetsForTest(0);
    hwy::GetChosenTarget().DeInit();
}
