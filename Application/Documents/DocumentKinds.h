#pragma once

#include <cstdint>

/// Where a document came from, which decides whether it is unsaved from birth and how it is made anew by a reload.
enum EDocumentKind : uint32_t
{
    eDocumentNew = 0,
    eDocumentFile = 1,
    eDocumentCubeMap = 2,
    eDocumentArray = 3,
    eDocumentFont = 4,
    eDocumentWrapped = 5,
    eDocumentEncoded = 6, ///< encoded from the texture of another window
};
