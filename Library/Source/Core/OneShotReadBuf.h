#pragma once

#include <cstdint>
#include <ios>
#include <streambuf>
#include <vector>

namespace moxtexture
{

/// A stream buffer over a range of memory that is read once. The range must outlive it.
///
/// It is the get area and nothing more: nothing may be written, and its end is the end of file. Positions are counted from the
/// start of the range; a seek to before it or past its end fails and moves nothing.
class OneShotReadBuf : public std::streambuf
{
public:
    explicit OneShotReadBuf(const std::vector<uint8_t>& bytes);

protected:
    pos_type seekoff(off_type iOffset, std::ios_base::seekdir eFrom, std::ios_base::openmode eWhich) override;
    pos_type seekpos(pos_type position, std::ios_base::openmode eWhich) override;
};

} // namespace moxtexture
