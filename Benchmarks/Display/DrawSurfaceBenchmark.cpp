// A redraw of 1920 by 1080 pixels in every mode and at every zoom, plain and fast, and the whole way to the label.

#include "Display/DrawSurface.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>
#include <vector>

#include <QtWidgets/QApplication>

#include "Display/CPictureLabel.h"
#include "Display/DisplayRoutine.h"
#include "Display/DrawCube.h"
#include "Display/ZoomScale.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;

namespace
{

constexpr uint32_t k_uiWidth = 1920;
constexpr uint32_t k_uiHeight = 1080;
constexpr uint32_t k_uiTextureSize = 4096;
constexpr uint32_t k_uiFaceSize = 1024;

void countPixels(benchmark::State& state)
{
    state.counters["MP/s"] = benchmark::Counter(k_uiWidth * k_uiHeight * 1e-6, benchmark::Counter::kIsIterationInvariantRate);
}

/// Where a view rests while it is measured: off the texels' edges, turned and nodding in a cube.
constexpr ViewOffset k_Offset = {301, 203};

struct Drawing
{
    SourceImage source;
    CubeFaces faces;
    float fZoom = 1.0f;
    PixelGrid grid;
    const CMOXDrawPixel* pDrawPixel = nullptr;
};

using Draw = void (*)(const Drawing& drawing, const TargetImage& target);

struct Form
{
    const char* pMode;
    const char* pForm;
    Draw draw;
    bool bCube;
};

const Form k_aForms[] = {
    {"single", "plain",
     [](const Drawing& d, const TargetImage& target)
     {
         ViewOffset offset = k_Offset;
         drawSingleReference(d.source, target, offset, d.fZoom, *d.pDrawPixel, &d.grid);
     },
     false},
    {"single", "fast",
     [](const Drawing& d, const TargetImage& target)
     {
         ViewOffset offset = k_Offset;
         drawSingle(d.source, target, offset, d.fZoom, *d.pDrawPixel, &d.grid);
     },
     false},
    {"tiled", "plain",
     [](const Drawing& d, const TargetImage& target) { drawTiledReference(d.source, target, k_Offset, d.fZoom, *d.pDrawPixel, &d.grid); },
     false},
    {"tiled", "fast",
     [](const Drawing& d, const TargetImage& target) { drawTiled(d.source, target, k_Offset, d.fZoom, *d.pDrawPixel, &d.grid); }, false},
    {"cube", "plain",
     [](const Drawing& d, const TargetImage& target) { drawCubeReference(d.faces, target, k_Offset, d.fZoom, *d.pDrawPixel); }, true},
    {"cube", "fast", [](const Drawing& d, const TargetImage& target) { drawCube(d.faces, target, k_Offset, d.fZoom, *d.pDrawPixel); },
     true},
};

void drawForm(benchmark::State& state, const Form& form, float fZoom, const CMOXDrawPixel& drawPixel)
{
    static const std::vector<uint8_t> s_Picture = testsupport::makePicture(k_uiTextureSize, k_uiTextureSize);
    Drawing drawing;
    drawing.source = {k_uiTextureSize, k_uiTextureSize, s_Picture.data()};
    drawing.faces = {k_uiFaceSize, k_uiFaceSize, {}};
    for (size_t i = 0; i < drawing.faces.apui8Pixels.size(); ++i)
        drawing.faces.apui8Pixels[i] = s_Picture.data() + i * 4 * k_uiFaceSize * k_uiFaceSize;
    drawing.fZoom = fZoom;
    drawing.grid.uiSize = 16;
    drawing.pDrawPixel = &drawPixel;
    std::vector<uint8_t> target(size_t{4} * k_uiWidth * k_uiHeight);
    for (auto _ : state)
    {
        form.draw(drawing, {k_uiWidth, k_uiHeight, target.data()});
        benchmark::ClobberMemory();
    }
    countPixels(state);
}

/// From the view to the picture on the label.
void drawLabel(benchmark::State& state, ETextureViewModes eMode, float fZoom)
{
    const uint32_t uiSize = eMode == eViewCube ? k_uiFaceSize : k_uiTextureSize;
    const uint32_t uiFaces = eMode == eViewCube ? 6 : 1;
    const std::vector<uint8_t> pixels = testsupport::makePicture(uiSize, uiSize * uiFaces);
    const CMOXTexture texture(CMOXTextureHeader(k_RGBA8, uiSize, uiSize, 1, 1, 1, uiFaces, eCS_Linear, eCT_UnsignedNormalisedByte, false),
                              pixels.data());
    CPictureLabel label;
    label.resize(k_uiWidth, k_uiHeight);
    DisplayPicture picture;
    picture.pLabel = &label;
    picture.pTexture = &texture;
    DisplayView view;
    view.eMode = eMode;
    view.fZoom = fZoom;
    view.bGridShown = true;
    for (auto _ : state)
    {
        view.i32OffsetX = k_Offset.x;
        view.i32OffsetY = k_Offset.y;
        drawPictures(&picture, 1, view, false);
        benchmark::ClobberMemory();
    }
    countPixels(state);
}

void registerAll()
{
    static const CMOXDrawPixelBlend s_Blend;
    static const CMOXDrawPixelPreMultBlend s_PreMultBlend;
    static const CMOXDrawPixelAlphaAsGrey s_AlphaAsGrey;
    const std::pair<const char*, const CMOXDrawPixel*> aDrawPixels[] = {
        {"blend", &s_Blend}, {"premult", &s_PreMultBlend}, {"grey", &s_AlphaAsGrey}};
    for (int32_t i32Position = 0; i32Position < k_i32ZoomPositionCount; ++i32Position)
    {
        const float fZoom = getZoomFactor(i32Position);
        const std::string strZoom = std::to_string(fZoom).substr(0, 5);
        for (const Form& form : k_aForms)
            for (const auto& [pName, pDrawPixel] : aDrawPixels)
            {
                const bool bMeasured = pDrawPixel == &s_Blend || fZoom == 1.0f || fZoom == 4.0f;
                if (!bMeasured || (form.bCube && fZoom < 1.0f))
                    continue;
                const std::string strName = std::string(form.pMode) + "/" + strZoom + "/" + pName + "/" + form.pForm;
                const CMOXDrawPixel& drawPixel = *pDrawPixel;
                benchmark::RegisterBenchmark(strName.c_str(), [&form, fZoom, &drawPixel](benchmark::State& state)
                                             { drawForm(state, form, fZoom, drawPixel); })
                    ->Unit(benchmark::kMillisecond);
            }
        const std::pair<const char*, ETextureViewModes> aModes[] = {{"single", eViewSingle}, {"tiled", eViewTiled}, {"cube", eViewCube}};
        for (const auto& [pMode, eMode] : aModes)
            if (eMode != eViewCube || fZoom >= 1.0f)
                benchmark::RegisterBenchmark((std::string(pMode) + "/" + strZoom + "/label").c_str(), drawLabel, eMode, fZoom)
                    ->Unit(benchmark::kMillisecond);
    }
}

} // namespace

int main(int iCount, char** apArguments)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(iCount, apArguments);
    registerAll();
    benchmark::Initialize(&iCount, apArguments);
    benchmark::RunSpecifiedBenchmarks();
    return EXIT_SUCCESS;
}
