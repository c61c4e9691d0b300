#include "Codecs/ETC/EtcMatrix.h"

#include "Core/Diagnostics.h"

namespace moxtexture
{

bool multiplyMatrices(const EtcMatrix& left, const EtcMatrix& right, EtcMatrix& product)
{
    if (left.uiColumns != right.uiRows)
    {
        writeDiagnostic("Cannot multiply matrices -- dimensions do not agree.\n");
        return false;
    }
    EtcMatrix result;
    result.uiRows = left.uiRows;
    result.uiColumns = right.uiColumns;
    if (result.uiRows * result.uiColumns > EtcMatrix::k_uiMostValues)
        return false;
    for (size_t y = 0; y < result.uiRows; ++y)
        for (size_t x = 0; x < result.uiColumns; ++x)
        {
            double fSum = 0.0;
            for (size_t k = 0; k < left.uiColumns; ++k)
                fSum += left.at(y, k) * right.at(k, x);
            result.afValues[y * result.uiColumns + x] = fSum;
        }
    product = result;
    return true;
}

} // namespace moxtexture
