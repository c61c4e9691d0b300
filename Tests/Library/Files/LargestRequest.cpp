#include "Library/Files/LargestRequest.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace testsupport
{

size_t& getLargestRequest()
{
    static size_t s_uiLargest = 0;
    return s_uiLargest;
}

} // namespace testsupport

namespace
{

void* request(size_t uiSize)
{
    size_t& uiLargest = testsupport::getLargestRequest();
    uiLargest = std::max(uiLargest, uiSize);
    return std::malloc(std::max<size_t>(uiSize, 1));
}

} // namespace

// All forms of them together: memory from one must do for the other's counterpart.
void* operator new(size_t uiSize)
{
    if (void* p = request(uiSize))
        return p;
    throw std::bad_alloc();
}

void* operator new[](size_t uiSize)
{
    return operator new(uiSize);
}

void* operator new(size_t uiSize, const std::nothrow_t&) noexcept
{
    return request(uiSize);
}

void* operator new[](size_t uiSize, const std::nothrow_t&) noexcept
{
    return request(uiSize);
}

void operator delete(void* p) noexcept
{
    std::free(p);
}

void operator delete[](void* p) noexcept
{
    std::free(p);
}

void operator delete(void* p, size_t) noexcept
{
    std::free(p);
}

void operator delete[](void* p, size_t) noexcept
{
    std::free(p);
}
