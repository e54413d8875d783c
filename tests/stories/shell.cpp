// Start-up, the menu states, the chords, leaving screens, and the report of an error.
#include "platform/controls/MSComm.h"
#include "platform/controls/Timer.h"
#include "shared/ErrorHandler.h"
#include "shared/General.h"
#include "support/Story.h"

namespace bexlow::test {

class Shell : public Story {};

TEST_F(Shell, StartsWithTheStoredPortAndClosedTools) {
  Start();
  EXPECT_EQ(std::tuple(Shared.CurrentCommPort, Shared.MaxDownloadPages), std::tuple(1, 2048));
  EXPECT_EQ(outer->windowTitle(), "Quornell Bexlow");
  EXPECT_FALSE(Offered("Tools", "Graph") || Offered("Display", "Angles"));
  EXPECT_TRUE(Offered("File", "Connect"));
  EXPECT_TRUE(fs::is_directory(DataFilesFolder()) && fs::is_directory(LogsFolder()));
  for (const auto& [stored, port] : {std::pair{"", 0}, {"7", 7}, {"16 or so", 16}, {"none", 0}}) {
    outer.reset();
    SaveSetting("Startup", "CurrentCommPort", stored);
    Start();
    EXPECT_EQ(Shared.CurrentCommPort, port) << stored;
  }
}

TEST_F(Shell, RefusesASecondCopyAndStartsWithoutAFolder) {
  {
    const RunningCopy first;
    Start();
    Reads("The program is already running!");
    EXPECT_EQ(Shared.MaxDownloadPages, 0) << "nothing may happen behind the refusal";
    EXPECT_FALSE(fs::is_directory(DataFilesFolder()));
  }
  WriteFile(LogsFolder(), "a file in the way");
  Start();
  Reads("The SimpleErrorHandler sub routine has errored!");  // there is no folder for the log
  EXPECT_EQ(ScreenInFront(), "Main");
}

TEST_F(Shell, ChordsActOnTheRemoteEntryAndTheDisplayMenu) {
  Start();
  const Qt::KeyboardModifiers none = Qt::NoModifier, ctrl = Qt::ControlModifier;
  for (const auto& [what, key, modifiers, display, remote] :
       {std::tuple{"the key alone", Qt::Key_F12, none, false, false},
        {"a modifier too many", Qt::Key_F11, ctrl | Qt::ShiftModifier, false, false},
        {"display on", Qt::Key_F12, ctrl, true, true},
        {"service hides remote", Qt::Key_F11, ctrl, true, false},
        {"service shows remote", Qt::Key_F11, ctrl, true, true},
        {"display off", Qt::Key_F12, ctrl, false, false}}) {
    Key(key, modifiers);
    EXPECT_EQ(std::tuple(outer->menuBar()->actions()[2]->isEnabled(), Shown("Display", "Angles"),
                         Shown("Display", "Remote Session")),
              std::tuple(display, !display, remote))
        << what;
  }
}

TEST_F(Shell, MainStaysAndComesToTheFrontAndScreensEndWithTheWindow) {
  StartConnected();
  auto& tabs = *outer->findChild<QTabBar*>();
  for (const auto* entry : {"Graph", "Graph Button Pushes"}) {
    Front("Main");
    Choose("Tools", entry);
  }
  Key(Qt::Key_W, Qt::ControlModifier);
  EXPECT_EQ(outer->Child("GraphBP"), nullptr);
  EXPECT_EQ(ScreenInFront(), "Main") << "also while another screen is open";
  Key(Qt::Key_W, Qt::ControlModifier);
  EXPECT_TRUE(tabs.tabButton(0, QTabBar::RightSide) == nullptr && tabs.count() == 2) << "Main and the graph";
  bool ended = false;
  outer->Child("Graph")->AtUnload([&] { ended = true; });
  outer.reset();
  EXPECT_TRUE(ended);
}

TEST_F(Shell, HelpAboutAndExit) {
  Start();
  const std::string elsewhere = "Please refer to the Software Help Manual located on the distribution media!";
  Key(Qt::Key_F1);
  Choose("Help", "Help");
  Reads(elsewhere, elsewhere);
  const auto manual = machine.ProgramFolder() / "manual.html";
  WriteFile(manual, "<p>");
  Key(Qt::Key_F1);
  EXPECT_EQ(machine.documents, std::vector{manual});
  Choose("Help", "About");
  EXPECT_EQ(ScreenInFront() + Text("Label2"), "AboutVersion 3.2.3 Beta");
  Key(Qt::Key_Escape);
  EXPECT_EQ(ScreenInFront(), "Main");
  Choose("File", "Exit");
  EXPECT_TRUE(machine.ended);
}

TEST_F(Shell, AnErrorIsLoggedAndAskedToTheLetter) {
  Start();
  machine.clock.hour = 0;
  shared::SimpleErrorHandler(5, "mnuSample_Click", "Angles", "It\nbroke");
  machine.clock.hour = 14;
  shared::SimpleErrorHandler(0, "Big", "Graph", "Again");
  const std::string report =
      "Date: 03/02/2004 12:05:09 am\r\nNumber: 5\r\nSource: mnuSample_Click\r\n"
      "Screen: Angles\r\nDescription: It broke\r\nApplication: BX323\r\nVersion: 3.2.3";
  EXPECT_EQ(FileText(LogsFolder() / "error.log"),
            "----------\r\n" + report +
                "\r\n----------\r\n\r\n----------\r\nDate: 03/02/2004 02:05:09 pm\r\n"
                "Number: 0\r\nSource: Big\r\nScreen: Graph\r\nDescription: Again\r\nApplication: BX323\r\n"
                "Version: 3.2.3\r\n----------\r\n\r\n");
  Reads(
      "The error shown below has occurred!\r\n"
      "The data being generated at this time may have been corrupted.\r\n"
      "Please correct the error or contact Quornell for customer support.\r\n\r\n" +
      report +
      "\r\n\r\n"
      "RETRY will allow application to continue.\r\nCANCEL will terminate application.\r\n");
  Reads("Big");
  EXPECT_FALSE(machine.ended);
  machine.WillAnswer(Answer::Cancel);
  shared::SimpleErrorHandler(1, "Big", "Graph", "words");
  Reads("Big", "Application will terminate; correct error cause and run application again!");
  EXPECT_TRUE(machine.ended);
  fs::remove_all(LogsFolder());
  shared::SimpleErrorHandler(1, "Big", "Graph", "words");
  Reads("The SimpleErrorHandler sub routine has errored!");
}

struct Failing : Form {
  Failing() : Form("Failing", "Failing") {
    OnCloseRequest = fail;
    MakeButton("cmdFail", "Fail", fail);
    AddEntry(AddMenu("mnuFile", "&File"), "mnuFail", "&Fail", fail);
    MakeOption("optFail", "Option", this, false, fail);
    AddChord(Qt::Key_F2, fail);
    StartWith(fail);
    timer.OnTimer = [this] {
      timer.Enabled(false);
      throw std::runtime_error("It broke");
    };
    comm.RThreshold(1);
    comm.OnComm = fail;
  }
  std::function<void()> fail = [] { throw std::runtime_error("It broke"); };
  Timer timer{*this, "TimerFail", 100};
  MSComm comm{*this, "MSComm2"};
};

TEST_F(Shell, WhateverHandlerFailsIsReportedOnceByItsName) {
  machine.Plug(logger, 1);
  Start();
  auto* form = new Failing;
  outer->ShowChild(form);
  for (const auto& [handler, happens] : std::vector<std::pair<std::string, std::function<void()>>>{
           {"Form_Load", [] {}},
           {"cmdFail_Click", [&] { Press("Fail"); }},
           {"mnuFail_Click", [&] { Choose("File", "Fail"); }},
           {"optFail_Click", [&] { The<QAbstractButton>("optFail").click(); }},
           {"Form_KeyDown", [&] { Key(Qt::Key_F2); }},
           {"Form_Unload", [&] { Key(Qt::Key_W, Qt::ControlModifier); }},
           {"TimerFail_Timer", [&] { form->timer.Enabled(true); }},
           {"MSComm2_OnComm",
            [&] {
              form->comm.PortOpen(true);
              machine.Deliver(1, {1});
            }},
           {"StatusLine_Timer", [&] {
              form->OnActivity = [form]() -> Activity {
                form->comm.PortOpen(false);
                throw std::runtime_error("It broke");
              };
            }}}) {
    SCOPED_TRACE(handler);
    happens();
    machine.Pass(300ms);
    EXPECT_TRUE(Contains(Reads(handler), "Screen: Failing\r\nDescription: It broke\r\n"));
    EXPECT_TRUE(machine.boxes.empty());
    if (handler == "MSComm2_OnComm") form->comm.Input();
  }
}

TEST_F(Shell, ScreensNeedAPortBringTheirMenusAndReportUnderTheOneInFront) {
  StartConnected();
  Choose("Tools", "Download");
  EXPECT_EQ(outer->menuBar()->actions().size(), 1);
  Choose("Data", "Return");
  EXPECT_EQ(ScreenInFront(), "Main");
  EXPECT_EQ(outer->menuBar()->actions().size(), 4);
  Shared.CurrentCommPort = 0;
  Choose("Tools", "Download");
  Reads("No comm port has been selected!");
  Choose("Tools", "Graph");
  const auto& graph = *Form::Active();
  for (const int tab : {0, 1, 0}) {
    outer->findChild<QTabBar*>()->setCurrentIndex(tab);  // as a click on it does
    EXPECT_EQ(ScreenInFront() + qPrintable(outer->menuBar()->actions().last()->text()),
              tab == 0 ? "Main&Help" : "Graph&File");
  }
  bool behind = false;
  shared::Guarded(graph, "Big", [&] {
    throw std::system_error(ENOSPC, std::generic_category(), "run.qbx");
    behind = true;
  });
  EXPECT_FALSE(behind);
  const auto why = "Screen: Main\r\nDescription: run.qbx: No space left on device\r\n";
  EXPECT_TRUE(Contains(Reads("Big"), "Number: " + std::to_string(ENOSPC) + "\r\nSource: Big\r\n" + why));
}

TEST_F(Shell, AFileIsShownWithoutALogger) {
  Start();
  WriteFile(DataFile("run.qbx"), Header() + Record("1", 264, "1"));
  WriteFile(DataFile("pushes.qbx"), Header() + Record("1", 264, "BP"));
  WriteFile(DataFile("words.txt"), std::string(12, '\n'));
  using Row = std::tuple<std::vector<const char*>, std::string, std::string>;
  for (const auto& [dropped, words, screen] :
       {Row{{"run.qbx"}, "", "Graph"}, Row{{"pushes.qbx"}, "", "GraphBP"},
        Row{{"words.txt"}, "This is not a Quornell Download Pages file!", "Graph"},
        Row{{""}, "The file cannot be read!\r\n" + DataFile("").string() + ": Is a directory", "Main"},
        Row{{"run.qbx", "pushes.qbx"}, "Only the first of these files is opened:\r\nrun.qbx", "Graph"}}) {
    SCOPED_TRACE(words + screen);
    Front("Main");
    QMimeData files;
    QList<QUrl> urls;
    for (const auto* name : dropped) urls << QUrl::fromLocalFile(DataFile(name).c_str());
    files.setUrls(urls);
    QDragEnterEvent enter({9, 9}, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(outer.get(), &enter);
    QDropEvent drop({9, 9}, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(outer.get(), &drop);
    machine.Settle();
    if (!words.empty()) Reads(words);
    EXPECT_EQ(ScreenInFront(), screen);
    EXPECT_TRUE(!words.empty() || Text("txtFileName") == DataFile(dropped.front()));
  }
  Front("Main");
  EXPECT_FALSE(Offered("Tools", "Graph"));
  machine.WillChooseFile(DataFile("pushes.qbx").string());
  Press("Open a data file...");
  EXPECT_EQ(machine.fileQuestions.back().Filter, "QBX Files (*.qbx)|*.qbx|All Files (*.*)|*.*");
  EXPECT_EQ(ScreenInFront(), "GraphBP");
}

}  // namespace bexlow::test
