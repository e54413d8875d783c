// Two screens side by side: what one does never changes what another is saving, reading or writing.
#include "link/SamplingScreen.h"
#include "stories/DownloadStory.h"
#include "values/NumberText.h"

namespace bexlow::test {

/// What a screen's menu starts, and how it ends.
struct Exchange {
  const char *screen, *caption, *menu, *entry;
  const char* status;            ///< what the status line begins with
  std::chrono::seconds runs{0};  ///< 0: it is stopped by the same entry
};

const Exchange All[] = {
    {"Configuration", "Configuration", "File", "Read", "Reading, at ", 1s},
    {"Configuration", "Configuration", "File", "Write", "Writing, at 2, 0 of 40 cells, 22 s left", 23s},
    {"Calibrate", "Calibrate", "Data", "Sample", "Sampling"},
    {"DownloadErase", "Download", "Data", "Download", "Downloading, page 1, at most "},
    {"DownloadErase", "Download", "Data", "Erase", "Erasing"},
    {"Accelerometers", "Accelerometers", "Data", "Sample", "Sampling"},
    {"Angles", "Angles", "Data", "Sample", "Sampling"},
    {"RemoteSession", "Remote Session", "Data", "Sample", "Sampling"},
    {"Main", "Main", "Tools", "Launch", "Erasing, page ", 10s},
};

struct Exchanges : DownloadStory {
  void SetUp() override {
    StartConnected();
    ServiceChord();
    for (const auto& exchange : All)
      if (outer->Child(exchange.screen) == nullptr) OpenScreen(exchange.caption);
    Store(3);
    logger.eraseBytes = 3000;
  }
  void On(const char* screen, const char* menu, const char* entry) {
    Front(screen);
    Choose(menu, entry);
  }
  void OpenScreen(const char* caption) {
    Front("Main");
    Choose(Offered("Tools", caption) ? "Tools" : "Display", caption);
    machine.Pass(1s);
    machine.boxes.clear();  // of a read, or of a port of the remote session that is not free here
  }
  void Begin(const Exchange& exchange) {
    Front(exchange.screen);
    const std::string entry = exchange.entry;
    if (entry == "Download") return DownloadStory::Begin();
    if (entry == "Erase" || entry == "Launch") machine.WillAnswer(Answer::Yes);
    Choose(exchange.menu, exchange.entry);
    machine.boxes.clear();  // questions and what is told at the start
  }
  /// The whole of what lblActivity shows as far as there is room.
  static std::string Told() { return Form::OtherEngaged()->Doing().Text(); }
  void End(const Exchange& exchange) {
    Front(exchange.screen);
    if (exchange.entry == "Download"s) return Finish();
    if (exchange.runs == 0s) Choose(exchange.menu, exchange.entry);
    machine.Pass(exchange.runs);
    const bool tells = exchange.runs > 0s || exchange.entry == "Erase"s;
    EXPECT_EQ(machine.boxes.size(), tells ? 1U : 0U);
    machine.boxes.clear();
  }
  void ExpectRefused(const std::string& by, const std::function<void()>& attempt) {
    const auto bytes = machine.wire.size();
    attempt();
    Reads("The screen \"" + by + "\" is using the logger. Please wait until it has ended" +
          (by == "Main" ? "!" : ", or stop it there! Return on that screen frees the logger at once."));
    EXPECT_EQ(machine.wire.size(), bytes);
  }
};

TEST_F(Exchanges, ARateIsThatOfTheLastSecondOrNone) {
  link::Pace pace;
  pace.Begin();
  const auto rate = [&](int count, milliseconds step) {
    for (int i = 0; i < count; ++i, pace.Count()) machine.Pass(step);
    return pace.PerSecond();
  };
  EXPECT_EQ(rate(100, 10ms), 100);
  EXPECT_EQ(rate(1, 5s), 0);
  EXPECT_EQ(rate(50, 20ms), 50);
}

TEST_F(Exchanges, WrongRepliesAreToldWhereNothingGoesOn) {
  StartConnected();
  logger.spoil = [](Bytes& reply, microseconds&) { reply.push_back(0); };
  Choose("Tools", "Configuration");
  machine.Pass(1s);
  EXPECT_TRUE(Status("lblActivity").starts_with("Wrong replies from the logger, asking again at 2"));
  Choose("File", "Return");
  logger.spoil = [](Bytes& reply, microseconds&) {
    if (reply.size() == 264) reply.push_back(0);
  };
  Choose("Tools", "Download");
  ChooseFile("Data", "Download", "run.qbx");
  machine.Pass(3s);
  EXPECT_EQ(Status("lblActivity"), "Wrong replies from the logger, asking again for page 0");
}

TEST_F(Exchanges, ASecondOneIsRefusedAndChangesNothing) {
  for (const auto& running : All) {
    SCOPED_TRACE(std::string(running.screen) + " " + running.entry);
    Begin(running);
    machine.Pass(250ms);
    EXPECT_TRUE(Status("lblActivity").starts_with(running.status)) << Status("lblActivity");
    for (const auto& other : All) {
      if (other.screen == std::string(running.screen)) continue;
      SCOPED_TRACE(std::string(other.screen) + " " + other.entry);
      Front(other.screen);
      ExpectRefused(running.caption, [&] { Choose(other.menu, other.entry); });
      EXPECT_TRUE(Offered(other.menu, other.entry) && !Checked(other.menu, other.entry));
    }
    Front("Angles");
    if (running.screen != "Angles"s) ExpectRefused(running.caption, [&] { Choose("Data", "Save"); });
    On("Main", "File", "Connect");
    for (const char* button : {"Auto Detect", "OK"}) ExpectRefused(running.caption, [&] { Press(button); });
    Key(Qt::Key_Escape);
    End(running);
    EXPECT_TRUE(running.entry != "Download"s || PagesInFile() == UpTo(3));
    EXPECT_EQ(Status("lblConnection") == "Connected on Comm 1, /dev/virtual1", running.screen != "Main"s);
    ExpectIdle();
    EXPECT_EQ(Status("lblActivity"), "");
  }
  EXPECT_EQ(Shared.OnBoardParameters.XOffset, 323);
}

TEST_F(Exchanges, AScreenThatIsLeftEndsItsOwnAndStartsAfresh) {
  for (const auto& left : All) {
    if (left.screen == "Main"s) continue;
    SCOPED_TRACE(std::string(left.screen) + " " + left.entry);
    for (const auto after : {0ms, 13ms, 300ms}) {
      Begin(left);
      machine.Pass(after);
      machine.boxes.clear();
      Close();
      ExpectIdle();
      OpenScreen(left.caption);
    }
    Begin(left);
    End(left);
    ExpectIdle();
  }
}

TEST_F(Exchanges, AReplyOnItsWayWhenAnExchangeIsLeftIsNotTheNextOnes) {
  logger.spoil = [](Bytes&, microseconds& delay) { delay = 95ms; };
  for (const auto& left : All) {
    if (left.screen == "Main"s || left.entry == "Erase"s) continue;
    SCOPED_TRACE(std::string(left.screen) + " " + left.entry);
    Begin(left);
    machine.Pass(10ms);
    machine.boxes.clear();
    Close();
    On("Main", "File", "Connect");
    Press("Auto Detect");  // flushes nothing
    Reads("Bexlow found on Comm 1!");
    Key(Qt::Key_Escape);
    OpenScreen(left.caption);
    machine.Pass(8s);
    machine.boxes.clear();
  }
  Front("Configuration");
  machine.wire.clear();
  Choose("File", "Read");
  Choose("File", "Return");
  On("Main", "Tools", "Configuration");
  machine.Pass(8s);
  Reads("Read completed!");
  EXPECT_EQ(machine.wire.size(), 54 * 2U);
  EXPECT_EQ(Text("NumEdit2"), "323");
}

// Each way to close asks, with No in front, and only one question stands at a time; Return asks nothing.
TEST_F(Exchanges, WhatRunsIsNotEndedByAccident) {
  auto& tabs = *outer->findChild<QTabBar*>();
  const auto cross = [&] { return tabs.tabButton(tabs.currentIndex(), QTabBar::RightSide); };
  const auto byKey = [this] { Key(Qt::Key_W, Qt::ControlModifier); };
  const auto byCross = [&] { qobject_cast<QAbstractButton*>(cross())->click(); };
  const auto byWindow = [this] { outer->close(); };
  Begin(All[3]);
  machine.Pass(300ms);
  const std::string facts = "The screen \"Download\" is using the logger.\r\nDownloading, page 2, at most " +
                            Text("txtTimeLeft").substr(8) + " left.\r\n";
  for (const auto& [close, question] : {std::pair<std::function<void()>, std::string>{byKey, "End it?"},
                                        {byCross, "End it?"},
                                        {byWindow, "End it, and the program?"}}) {
    for (int twice = 0; twice < 2; ++twice) {
      machine.WillAnswer(Answer::No);
      machine.whileBoxIsOpen = close;
      close();
      Reads(facts + question);
      EXPECT_EQ(machine.buttons.back(), Buttons::Confirm);
      EXPECT_TRUE(outer->isVisible() && machine.boxes.empty() && ScreenInFront() == "DownloadErase");
    }
    Front("Angles");
    if (question == "End it?") close();  // this screen is at rest
    EXPECT_EQ(ScreenInFront(), question == "End it?" ? "Main" : "Angles");
    Front("Main");
    if (outer->Child("Angles") == nullptr) Choose("Display", "Angles");
    Front("DownloadErase");
  }
  machine.WillAnswer(Answer::Yes);
  byKey();
  Reads(facts + "End it?");
  EXPECT_EQ(outer->Child("DownloadErase"), nullptr);
  outer->close();
  EXPECT_FALSE(outer->isVisible());
}

TEST_F(Exchanges, TheStatusLineTellsSamplesAndTheLastFailure) {
  Front("Angles");
  ChooseFile("Data", "Save", "live.qbx");
  Choose("Data", "Sample");
  machine.Pass(5s);
  EXPECT_EQ(Told(), "Sampling, 384 samples a second, saving to live.qbx, 1,919 samples");
  logger.silent = true;  // a sample takes 5 bytes, 2.605 ms: one more is on the line
  machine.Pass(7250ms);
  EXPECT_EQ(Told(), "No sample for 7 s, check the cable and start again; 1,920 samples are in live.qbx");
  logger.silent = false;
  machine.Unplug(1);
  machine.Pass(1s);
  Choose("Data", "Sample");
  Choose("Data", "Sample");
  Reads("OpenCommPort", "mnuSample_Click");
  machine.Pass(1s);
  EXPECT_EQ(Status("lblFailure"), "14:05:29 Angles: Comm 1 is not open: Bad file descriptor");
  Choose("Data", "Sample");
  machine.Plug(logger, 1);
  Choose("Data", "Sample");
  machine.Pass(250ms);
  EXPECT_EQ(Status("lblFailure"), "");
  logger.silent = true;
  machine.Pass(250ms);
  EXPECT_EQ(Told(),
            "Sampling, saving to live.qbx, " + values::CountText(std::ssize(LinesAfter(10))) + " samples")
      << "no whole second yet, and what the file holds of both runs";
  Choose("Data", "Sample");
}

TEST_F(Exchanges, EachKeepsToItsOwnFile) {
  const auto sample = [this] {
    On("Angles", "Data", "Sample");
    machine.Pass(100ms);
    Choose("Data", "Sample");
  };
  fs::create_symlink("run.qbx", DataFile("link.qbx"));
  const auto save = [this](const char* recorder, const char* name) {
    Front(recorder);
    ChooseFile("Data", "Save", name);
  };
  save("Accelerometers", "link.qbx");
  save("Angles", "run.qbx");
  Front("DownloadErase");
  DownloadStory::Begin();  // into the file of a recording: that ends its saving
  Finish();
  const auto run = FileText(path);
  for (const char* recorder : {"Accelerometers", "Angles"}) {
    Front(recorder);
    EXPECT_FALSE(Checked("Data", "Save"));
  }
  sample();
  EXPECT_EQ(FileText(path), run);

  save("Accelerometers", "live.qbx");
  const auto header = FileText(path);
  sample();
  EXPECT_EQ(FileText(path), header);
  ChooseFile("Data", "Save", "live.qbx");
  Choose("Data", "Sample");
  On("DownloadErase", "Data", "Return");
  const auto size = FileText(path).size();
  machine.Pass(100ms);
  EXPECT_GT(FileText(path).size(), size);
  On("Angles", "Data", "Sample");
}

TEST_F(Exchanges, ATickThatWaitedIsFollowedByAWholeInterval) {
  Front("Configuration");
  machine.wire.clear();
  Choose("File", "Write");
  machine.Pass(1300ms);
  machine.whileBoxIsOpen = [&] { machine.Pass(4300ms); };
  MsgBox("open");
  Reads("open");
  machine.Pass(22s);
  Reads("Write completed!");
  ASSERT_EQ(machine.wire.size(), 40 * 3U);
  for (std::size_t i = 3; i < machine.wire.size(); i += 3)
    EXPECT_GE(machine.wire[i].at - machine.wire[i - 3].at, 500ms) << "cell " << i / 3;
}

}  // namespace bexlow::test
