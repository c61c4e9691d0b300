#include "Codecs/BC/BcPrincipalAxis.h"

#include <cmath>

namespace moxtexture
{

BcColour findBcPrincipalAxis(const BcCovariance& covariance)
{
    const auto [rr, rg, rb, gg, gb, bb] = covariance;
    const BcColour red{rr, rg, rb};
    const BcColour green{rg, gg, gb};
    const BcColour blue{rb, gb, bb};

    BcColour axis{1.0f, 1.0f, 1.0f};
    for (uint32_t uiStep = 0; uiStep < k_uiBcAxisSteps; ++uiStep)
    {
        const BcColour product{dotProduct(red, axis), dotProduct(green, axis), dotProduct(blue, axis)};
        const float fLength = std::sqrt(dotProduct(product, product));
        if (fLength == 0.0f)
            break;
        // On purpose: times the reciprocal. Channels divided by the length would round otherwise, and rare blocks with them.
        const BcColour next = product * (1.0f / fLength);
        const BcColour move = next - axis;
        axis = next;
        if (std::sqrt(dotProduct(move, move)) < k_fBcAxisTolerance)
            break;
    }
    return axis;
}

} // namespace moxtexture
