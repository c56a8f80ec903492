#include "editor/zoom.h"

#include "res/resource.h"
#include "ui/screen/scale.h"

namespace {

constexpr ZoomStep kSteps[] = {
    {CMD_ZOOM_50, L"50%", FW_NORMAL, -9},
    {CMD_ZOOM_100, L"100%", FW_NORMAL, -12},
    {CMD_ZOOM_150, L"150%", FW_BOLD, -14},
    {CMD_ZOOM_200, L"200%", FW_BOLD, -18},
};
constexpr const ZoomStep& kDefaultStep = kSteps[1];

} // namespace

std::span<const ZoomStep> ZoomSteps()
{
    return kSteps;
}

const ZoomStep& ZoomStepOf(unsigned menuId)
{
    for (const ZoomStep& step : kSteps)
        if (menuId == static_cast<unsigned>(step.menuId))
            return step;
    return kDefaultStep;
}

ButtonFace ZoomFace(const ZoomStep& step)
{
    return {step.text, kZoomImage, kZoomWidth};
}

UniqueFont MakeZoomFont(const ZoomStep& step, int dpi)
{
    LOGFONTW font{};
    font.lfHeight = ScaleForDpi(step.height, dpi);
    font.lfWeight = step.weight;
    font.lfCharSet = DEFAULT_CHARSET;
    wcscpy(font.lfFaceName, L"Tahoma");
    return UniqueFont(CreateFontIndirectW(&font));
}
