// Faults in the functions that timers call.
#pragma once

// From now on such a fault ends the program, as any other does, where the system would pass over it and let
// the program go on with what is half done. At a program's start.
void EndOnTimerFaults();
