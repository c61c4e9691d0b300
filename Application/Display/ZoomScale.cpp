#include "Display/ZoomScale.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

float getZoomFactor(int32_t i32Position)
{
    return std::ldexp(0.125f, clampZoomPosition(i32Position, eViewSingle));
}

int32_t clampZoomPosition(int32_t i32Position, ETextureViewModes eMode)
{
    const int32_t i32Least = eMode == eViewCube ? k_i32DefaultZoomPosition : 0;
    return std::clamp(i32Position, i32Least, k_i32ZoomPositionCount - 1);
}

std::string getZoomText(float fZoom)
{
    const int iDecimals = fZoom >= 1.0f ? 0 : fZoom >= 0.5f ? 1 : fZoom >= 0.25f ? 2 : 3;
    char acText[64];
    std::snprintf(acText, sizeof acText, "%.*f : 1", iDecimals, static_cast<double>(fZoom));
    return acText;
}

std::string getNoZoomText()
{
    return "  :  ";
}
