#pragma once

#include <cstdint>

#include "Core/Workers.h"

namespace testsupport
{

/// Sets the processor count for as long as it lives; then it is the machine's own again.
class CProcessorCount
{
public:
    explicit CProcessorCount(uint32_t uiCount) { moxtexture::setProcessorCount(uiCount); }
    ~CProcessorCount() { moxtexture::setProcessorCount(0); }
    CProcessorCount(const CProcessorCount&) = delete;
    CProcessorCount& operator=(const CProcessorCount&) = delete;
};

} // namespace testsupport
