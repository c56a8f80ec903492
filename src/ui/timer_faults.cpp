#include "ui/timer_faults.h"

#include <windows.h>

void EndOnTimerFaults()
{
    BOOL isPassedOver = FALSE;
    SetUserObjectInformationW(GetCurrentProcess(), UOI_TIMERPROC_EXCEPTION_SUPPRESSION, &isPassedOver,
                              sizeof isPassedOver);
}
