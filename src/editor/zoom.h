// The four sizes of the body's text.
#pragma once

#include <span>
#include <string>

#include "editor/value_pickers.h"
#include "util/owners.h"

struct ZoomStep {
    int menuId;
    const wchar_t* text;
    int weight;
    int height; // of the font, as LOGFONT counts it, at 96 dpi
};

// In menu order.
std::span<const ZoomStep> ZoomSteps();
// The step of a menu id; any other number gives 100 %.
const ZoomStep& ZoomStepOf(unsigned menuId);

ButtonFace ZoomFace(const ZoomStep& step);
UniqueFont MakeZoomFont(const ZoomStep& step, int dpi);
