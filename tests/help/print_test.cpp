#include "help/print.h"

#include <windows.h>
#include <cderr.h>
#include <commdlg.h>

#include <gtest/gtest.h>

#include <functional>

#include "help/resource.h"
#include "help_window_fixture.h"
#include "pages.h"
#include "support/import_watch.h"
#include "support/test_windows.h"
#include "util/owners.h"

namespace help {
namespace {

using UniqueDc = UniqueHandle<HDC, DeleteDC>;

// A metafile takes what a printer would get.
TEST(Print, LeavesThreeQuartersOfAnInchAround)
{
    HDC device = CreateEnhMetaFileW(nullptr, nullptr, nullptr, L"help\0test\0");
    ASSERT_NE(device, nullptr);
    const PrintArea area = AreaOf(device);
    EXPECT_EQ(area.inch, GetDeviceCaps(device, LOGPIXELSX));
    EXPECT_EQ(area.left, area.inch * 3 / 4);
    EXPECT_EQ(area.top, GetDeviceCaps(device, LOGPIXELSY) * 3 / 4);
    EXPECT_EQ(area.width, GetDeviceCaps(device, HORZRES) - 2 * area.left);
    EXPECT_EQ(area.height, GetDeviceCaps(device, VERTRES) - 2 * area.top);
    const UniqueHandle<HENHMETAFILE, DeleteEnhMetaFile> file(CloseEnhMetaFile(device));
    ASSERT_TRUE(file);
}

// A printer that writes down what it is told, and may refuse any of it. Drawing on a picture goes on as ever.
class Printer {
  public:
    Printer() { s_log.clear(), s_fonts.clear(), s_refused.clear(), s_job = 0, s_error = 0; }
    ~Printer() { s_refused.clear(); }

    // "D" and "d" begin and end the document, "P" and "p" a page, "x" gives it up; a text stands as it is.
    const std::vector<std::wstring>& Log() const { return s_log; }
    std::wstring Steps() const
    {
        std::wstring steps;
        for (const std::wstring& entry : s_log)
            if (entry.size() == 1 && std::wstring(L"DdPpx").find(entry) != std::wstring::npos)
                steps += entry;
        return steps;
    }
    // Of each text, in their order.
    const std::vector<LOGFONTW>& Fonts() const { return s_fonts; }
    void Refuse(const wchar_t* step) { s_refused = step; }
    // The document does not begin, with what the system then answers.
    void RefuseDocument(int job, DWORD error)
    {
        Refuse(L"D");
        s_job = job;
        s_error = error;
    }
    // The file that was asked for, "" for none.
    const std::wstring& Output() const { return s_output; }
    HDC Device() const { return m_dc.get(); }

  private:
    static int Note(const wchar_t* step)
    {
        s_log.push_back(step);
        return s_refused == step ? 0 : 1;
    }
    static int WINAPI Begin(HDC, const DOCINFOW* document)
    {
        EXPECT_STREQ(document->lpszDocName, L"Title");
        s_output = document->lpszOutput ? document->lpszOutput : L"";
        const int begun = Note(L"D");
        SetLastError(begun ? 0 : s_error);
        return begun ? begun : s_job;
    }
    static int WINAPI BeginPage(HDC) { return Note(L"P"); }
    static int WINAPI FinishPage(HDC) { return Note(L"p"); }
    static int WINAPI Finish(HDC) { return Note(L"d"); }
    static int WINAPI GiveUp(HDC) { return Note(L"x"); }
    static BOOL WINAPI Write(HDC dc, int, int, LPCWSTR text, int length)
    {
        LOGFONTW font{};
        GetObjectW(GetCurrentObject(dc, OBJ_FONT), sizeof font, &font);
        s_fonts.push_back(font);
        s_log.emplace_back(text, static_cast<size_t>(length));
        return TRUE;
    }

    static inline std::vector<std::wstring> s_log;
    static inline std::vector<LOGFONTW> s_fonts;
    static inline std::wstring s_refused, s_output;
    static inline int s_job;
    static inline DWORD s_error;
    const UniqueDc m_dc{CreateCompatibleDC(nullptr)};
    const ImportWatch<decltype(&StartDocW)> m_begin{&__imp_StartDocW, Begin};
    const ImportWatch<decltype(&StartPage)> m_beginPage{&__imp_StartPage, BeginPage};
    const ImportWatch<decltype(&EndPage)> m_finishPage{&__imp_EndPage, FinishPage};
    const ImportWatch<decltype(&EndDoc)> m_finish{&__imp_EndDoc, Finish};
    const ImportWatch<decltype(&AbortDoc)> m_giveUp{&__imp_AbortDoc, GiveUp};
    const ImportWatch<decltype(&TextOutW)> m_write{&__imp_TextOutW, Write};
};

TEST(Print, WritesEachPageBetweenItsBeginningAndItsEnd)
{
    Printer printer;
    EXPECT_EQ(PrintBlocks(printer.Device(), L"Title", BlocksOf(L"<h1>Head</h1><p>one two")),
              PrintEnd::Printed);
    EXPECT_EQ(printer.Log(), (std::vector<std::wstring>{L"D", L"P", L"Head", L"one", L"two", L"p", L"d"}));
}

TEST(Print, WritesInTheFontsOfTheText)
{
    Printer printer;
    EXPECT_EQ(PrintBlocks(printer.Device(), L"Title",
                          BlocksOf(L"<h1>Head</h1><p>one <i>two</i> <code>three</code> four")),
              PrintEnd::Printed);
    ASSERT_EQ(printer.Fonts().size(), 5u);
    const auto& fonts = printer.Fonts();
    const int inch = GetDeviceCaps(printer.Device(), LOGPIXELSY);
    EXPECT_EQ(fonts[0].lfHeight, -MulDiv(16, inch, 72));
    EXPECT_EQ(fonts[0].lfWeight, FW_BOLD);
    EXPECT_EQ(fonts[1].lfHeight, -MulDiv(10, inch, 72));
    EXPECT_EQ(fonts[1].lfWeight, FW_NORMAL);
    EXPECT_FALSE(fonts[1].lfItalic);
    EXPECT_TRUE(fonts[2].lfItalic);
    EXPECT_STREQ(fonts[3].lfFaceName, L"Courier New");
    EXPECT_STREQ(fonts[4].lfFaceName, L"Tahoma");
}

TEST(Print, PrintsAsManyPagesAsTheTextNeeds)
{
    Printer printer;
    std::wstring page, words, printed;
    for (int word = 0; word < 2000; ++word) {
        page += L"<p>word" + std::to_wstring(word);
        words += L"word" + std::to_wstring(word) + L" ";
    }
    EXPECT_EQ(PrintBlocks(printer.Device(), L"Title", BlocksOf(page)), PrintEnd::Printed);
    for (const std::wstring& entry : printer.Log())
        if (entry.size() > 1)
            printed += entry + L" ";
    EXPECT_EQ(printed, words);
    const std::wstring steps = printer.Steps();
    EXPECT_GT(steps.size(), 12u);
    for (size_t step = 1; step + 1 < steps.size(); ++step)
        EXPECT_EQ(steps[step], step % 2 ? L'P' : L'p');
}

TEST(Print, WithoutATextNoPageIsPrinted)
{
    Printer printer;
    EXPECT_EQ(PrintBlocks(printer.Device(), L"Title", {}), PrintEnd::Printed);
    EXPECT_EQ(printer.Steps(), L"Dd");
}

TEST(Print, GivesUpWhenThePrinterRefuses)
{
    const std::vector<Block> blocks = BlocksOf(L"<p>text");
    const struct {
        const wchar_t* refused;
        const wchar_t* steps;
    } wanted[] = {{L"D", L"D"}, {L"P", L"DPx"}, {L"p", L"DPpx"}, {L"d", L"DPpd"}};
    for (const auto& refusal : wanted) {
        Printer printer;
        printer.Refuse(refusal.refused);
        EXPECT_EQ(PrintBlocks(printer.Device(), L"Title", blocks), PrintEnd::Failed) << refusal.refused;
        EXPECT_EQ(printer.Steps(), refusal.steps);
    }
}

// The system's dialog, answered before it shows.
class PrintDialog {
  public:
    // A chosen device is the answerer's; without one the dialog ends with the error, 0 for Cancel.
    PrintDialog(HDC chosen, DWORD error, bool intoFile = false)
    {
        s_chosen = chosen, s_error = error, s_asked = 0, s_intoFile = intoFile;
        s_whileAsked = [] {};
    }
    void WhileAsked(std::function<void()> action) { s_whileAsked = std::move(action); }
    int Asked() const { return s_asked; }

  private:
    static BOOL WINAPI Answer(PRINTDLGW* dialog)
    {
        ++s_asked;
        EXPECT_TRUE(dialog->Flags & PD_RETURNDC);
        EXPECT_TRUE(dialog->Flags & PD_NOPAGENUMS);
        EXPECT_TRUE(dialog->Flags & PD_NOSELECTION);
        EXPECT_EQ(dialog->lStructSize, sizeof *dialog);
        s_owner = dialog->hwndOwner;
        s_whileAsked();
        dialog->hDC = s_chosen;
        if (s_intoFile)
            dialog->Flags |= PD_PRINTTOFILE;
        return !s_error && s_chosen;
    }
    static DWORD WINAPI Error() { return s_error; }

  public:
    static inline HWND s_owner;

  private:
    static inline HDC s_chosen;
    static inline DWORD s_error;
    static inline int s_asked;
    static inline bool s_intoFile;
    static inline std::function<void()> s_whileAsked;
    const ImportWatch<decltype(&PrintDlgW)> m_answer{&__imp_PrintDlgW, Answer};
    const ImportWatch<decltype(&CommDlgExtendedError)> m_error{&__imp_CommDlgExtendedError, Error};
};

TEST(AskAndPrint, PrintsOnTheChosenPrinter)
{
    const TestParent owner;
    Printer printer;
    const MessageBoxAnswerer boxes;
    const PrintDialog dialog(CreateCompatibleDC(nullptr), 0);
    AskAndPrint(owner.Handle(), L"Title", BlocksOf(L"<p>text"));
    EXPECT_EQ(dialog.Asked(), 1);
    EXPECT_EQ(PrintDialog::s_owner, owner.Handle());
    EXPECT_EQ(printer.Steps(), L"DPpd");
    EXPECT_EQ(printer.Output(), L"");
    EXPECT_TRUE(boxes.Boxes().empty());
}

TEST(AskAndPrint, APersonWhoCancelsIsToldNothing)
{
    const MessageBoxAnswerer boxes;
    Printer printer;
    for (const DWORD error : {DWORD{0}, DWORD{PDERR_NODEFAULTPRN}}) { // the system tells of the second itself
        const PrintDialog dialog(nullptr, error);
        AskAndPrint(nullptr, L"Title", BlocksOf(L"<p>text"));
        EXPECT_EQ(dialog.Asked(), 1);
    }
    EXPECT_TRUE(boxes.Boxes().empty());
    EXPECT_EQ(printer.Steps(), L"");
}

TEST(AskAndPrint, CancelWhereTheFileIsAskedForIsToldByNobody)
{
    const struct {
        int job;
        DWORD error;
    } cancels[] = {
        {SP_ERROR, ERROR_CANCELLED}, {0, ERROR_PRINT_CANCELLED}, {SP_USERABORT, 0}, {SP_APPABORT, 0}};
    const MessageBoxAnswerer boxes;
    for (const auto& cancel : cancels) {
        Printer printer;
        printer.RefuseDocument(cancel.job, cancel.error);
        const PrintDialog dialog(CreateCompatibleDC(nullptr), 0, true);
        AskAndPrint(nullptr, L"Title", BlocksOf(L"<p>text"));
        EXPECT_EQ(printer.Steps(), L"D");
        EXPECT_EQ(printer.Output(), L"FILE:");
    }
    EXPECT_TRUE(boxes.Boxes().empty());
}

TEST(AskAndPrint, WhatCannotBePrintedIsSaid)
{
    const TestParent owner;
    const MessageBoxAnswerer boxes;
    {
        const PrintDialog dialog(nullptr, PDERR_INITFAILURE);
        AskAndPrint(owner.Handle(), L"Title", BlocksOf(L"<p>text"));
    }
    {
        Printer printer;
        printer.Refuse(L"P");
        const PrintDialog dialog(CreateCompatibleDC(nullptr), 0);
        AskAndPrint(owner.Handle(), L"Title", BlocksOf(L"<p>text"));
    }
    ASSERT_EQ(boxes.Boxes().size(), 2u);
    for (const MessageBoxAnswerer::Box& box : boxes.Boxes()) {
        EXPECT_EQ(box.text, L"The help could not be printed.");
        EXPECT_EQ(box.caption, L"Title");
        EXPECT_EQ(box.owner, owner.Handle());
    }
}

class PrintFromWindow : public HelpWindowTest {};

TEST_F(PrintFromWindow, PrintsTheTopicOrAll)
{
    Open("<title>Title</title><h1>One</h1><h1>Two</h1><h1>Three</h1>");
    Command(CMD_NEXT_TOPIC);
    const struct {
        int command;
        std::vector<std::wstring> texts;
    } wanted[] = {{CMD_PRINT_TOPIC, {L"Two"}}, {CMD_PRINT_ALL, {L"One", L"Two", L"Three"}}};
    for (const auto& print : wanted) {
        const Printer printer;
        const PrintDialog dialog(CreateCompatibleDC(nullptr), 0);
        Command(print.command);
        std::vector<std::wstring> texts;
        for (const std::wstring& entry : printer.Log())
            if (entry.size() > 1)
                texts.push_back(entry);
        EXPECT_EQ(texts, print.texts);
        EXPECT_EQ(PrintDialog::s_owner, m_window->Handle());
    }
    m_window->Show(RequestOfText(L"#Absent"));
    const PrintDialog dialog(nullptr, 0);
    Command(CMD_PRINT_TOPIC);
    EXPECT_EQ(dialog.Asked(), 0) << "what is said is no topic";
}

// Another program asks for another file in the meantime.
TEST_F(PrintFromWindow, PrintsWhatWasShownWhenThePersonWasAsked)
{
    m_folder.Write(L"other.htm", "<title>Other</title><h1>Elsewhere</h1>");
    for (const int command : {CMD_PRINT_TOPIC, CMD_PRINT_ALL}) {
        Open("<title>Title</title><h1>One</h1><p>Text that stands here");
        const Printer printer;
        PrintDialog dialog(CreateCompatibleDC(nullptr), 0);
        dialog.WhileAsked([&] { m_window->Show(RequestOfText(L"other.htm")); });
        Command(command);
        EXPECT_EQ(printer.Log(), (std::vector<std::wstring>{L"D", L"P", L"One", L"Text", L"that", L"stands",
                                                            L"here", L"p", L"d"}));
        EXPECT_EQ(Title(), L"Elsewhere");
        Close();
    }
}

} // namespace
} // namespace help
