#include "Pixels/ConversionRoute.h"

namespace moxtexture
{

std::unique_ptr<CConversionRoute> chooseRoute(const ConversionPlan& plan, uint64_t ui64Pixels)
{
    // Tables take the colour space step in the same look-up; without it vectors are faster.
    using Make = std::unique_ptr<CConversionRoute> (*)(const ConversionPlan&, uint64_t);
    constexpr Make apMappedOrder[] = {makeTableRoute, makeElementRoute, makePlaneRoute};
    constexpr Make apOrder[] = {makeElementRoute, makeTableRoute, makePlaneRoute};
    for (const Make pMake : plan.eMapping != EColourMapping::eNone ? apMappedOrder : apOrder)
        if (auto pRoute = pMake(plan, ui64Pixels))
            return pRoute;
    return nullptr;
}

} // namespace moxtexture
