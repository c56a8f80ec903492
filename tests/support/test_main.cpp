#include <windows.h>
#include <commctrl.h>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    // A crash must end the program with its exception code, not wait in a box.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    const INITCOMMONCONTROLSEX controls{sizeof controls,
                                        ICC_WIN95_CLASSES | ICC_DATE_CLASSES | ICC_COOL_CLASSES};
    InitCommonControlsEx(&controls);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
