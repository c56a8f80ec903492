#include "app/main_window_fixture.h"

HINSTANCE Instance()
{
    return GetModuleHandleW(nullptr);
}

bool TakeQuitMessage()
{
    MSG message;
    return PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) && message.message == WM_QUIT;
}

CEOID AddEntry(const wchar_t* subject, uint64_t date)
{
    std::wstring text = subject;
    CEPROPVAL properties[2]{};
    properties[0].propid = kPropDate;
    properties[0].val.filetime = TimeCount(date).ToFileTime();
    properties[1].propid = kPropSubject;
    properties[1].val.lpwstr = text.data();
    return App().Journal().WriteRecord(0, 2, properties);
}

void MainWindowTest::ExpectListBelowBands()
{
    RECT client{}, list{};
    GetClientRect(m_window.Handle(), &client);
    GetWindowRect(List(), &list);
    MapWindowPoints(nullptr, m_window.Handle(), reinterpret_cast<POINT*>(&list), 2);
    EXPECT_EQ(list.left, 0);
    EXPECT_EQ(list.top, CommandBands_Height(Bands()));
    EXPECT_EQ(list.right, client.right);
    EXPECT_EQ(list.bottom, client.bottom);
}
