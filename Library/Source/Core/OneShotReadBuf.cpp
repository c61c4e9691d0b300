#include "Core/OneShotReadBuf.h"

namespace moxtexture
{

OneShotReadBuf::OneShotReadBuf(const std::vector<uint8_t>& bytes)
{
    // The get area is declared for changing, but without a put area nobody does.
    char* pStart = const_cast<char*>(reinterpret_cast<const char*>(bytes.data()));
    if (!bytes.empty())
        setg(pStart, pStart, pStart + bytes.size());
}

OneShotReadBuf::pos_type OneShotReadBuf::seekoff(off_type iOffset, std::ios_base::seekdir eFrom, std::ios_base::openmode eWhich)
{
    const pos_type failed(off_type(-1));
    if ((eWhich & std::ios_base::in) == 0)
        return failed;

    const off_type iSize = egptr() - eback();
    off_type iBase = 0;
    if (eFrom == std::ios_base::cur)
        iBase = gptr() - eback();
    else if (eFrom == std::ios_base::end)
        iBase = iSize;
    if (iOffset < -iBase || iOffset > iSize - iBase)
        return failed;
    const off_type iPosition = iBase + iOffset;
    if (iSize != 0)
        setg(eback(), eback() + iPosition, egptr());
    return iPosition;
}

OneShotReadBuf::pos_type OneShotReadBuf::seekpos(pos_type position, std::ios_base::openmode eWhich)
{
    return seekoff(off_type(position), std::ios_base::beg, eWhich);
}

} // namespace moxtexture
