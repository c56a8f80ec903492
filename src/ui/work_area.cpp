#include "ui/work_area.h"

RECT WorkArea()
{
    RECT area{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    return area;
}
