// The four retrievals and the page loop with its watchdog.
#include "platform/Folders.h"
#include "stories/DownloadStory.h"

namespace bexlow::test {

TEST_F(DownloadStory, AWholeDownloadGivesDataFileAndCsv) {
  OpenScreen();
  Store(2);
  machine.WillAnswer(Answer::No);
  Begin();
  EXPECT_EQ(Text("txtMode"), "Linear");
  EXPECT_EQ(Text("txtChannels"), "3");
  EXPECT_EQ(machine.fileQuestions.back().filter,
            "All Files (*.*)|*.*|Text Files(*.txt)|*.txt|QBX Files (*.qbx)|*.qbx");
  EXPECT_EQ(machine.fileQuestions.back().filterIndex, 3);
  EXPECT_TRUE(machine.fileQuestions.back().confirmReplacing);
  EXPECT_TRUE(machine.fileQuestions.back().defaultSuffix.empty());
  EXPECT_TRUE(PointerIsBusy());
  RunToTheEnd();
  ReadsCompletion();
  const std::string text = FileText(path);
  EXPECT_TRUE(text.starts_with(
      "Quornell Bexlow Data File Version 3.2.3\r\nDownload Pages\r\nFirmware Version: 3.3\r\n"
      "Serial Number: 417\r\nLaunch Time: 03/09/2004 14:05:07\r\n"
      "Firmware Sampling Frequency: 7.5\r\nChannel Gains: X=323 Y=408 Z=322\r\n"
      "Channel Offsets: X=323 Y=324 Z=322\r\nTares: X=61895 Y=0\r\n"
      "Bin/Linear Mode = 1\r\nLinear Channel = 3\r\nPage,X Data-->,Y Data-->\r\n"
      "1,1.4,1.4,4.2,2.8,"))
      << text.substr(0, 600);
  EXPECT_EQ(PagesInFile(), UpTo(2));
  const std::string csv = FileText(DataFile("run.csv"));
  EXPECT_NE(csv.find("\r\nLinear Channel = 3\r\nX angle,Y angle\r\n1.4,1.4\r\n4.2,2.8\r\n"),
            std::string::npos);
  EXPECT_EQ(std::count(csv.begin(), csv.end(), '\n'), 12 + 2 * 132);
  EXPECT_FALSE(PointerIsBusy());
  EXPECT_FALSE(machine.AnyPortOpen());
  EXPECT_EQ(Text("fraPBar"), "Download Progress");
  EXPECT_EQ(Shared.DataFileName, path.string());
  EXPECT_TRUE(Offered("Data", "Erase"));
}

TEST_F(DownloadStory, TheRetrievalsKeepTheirPauses) {
  OpenScreen();
  machine.WillCancelFile();
  const auto start = machine.Time();
  Choose("Data", "Download");
  Reads("Download operation cancelled!");
  // mode 250 first, then 262 a cell; firmware 500 each; ten cells and sixteen cells at 112
  EXPECT_EQ((machine.Time() - start) / milliseconds(1), 250 + 2 * 262 + 2 * 500 + 26 * 112);
  const auto transcript = machine.Transcript();
  EXPECT_TRUE(
      transcript.starts_with("0 72|12 2A|262 72|274 2B|524 6C|1024 6D|1524 72|1536 64|1636 72|1648 65|"))
      << transcript;
  EXPECT_EQ(machine.wire.front().at - start, milliseconds(250));
  EXPECT_FALSE(Running());
  EXPECT_TRUE(Offered("Data", "Download"));
}

TEST_F(DownloadStory, ARetrievalThatFailsStopsBeforeTheFile) {
  struct Row {
    const char* what;
    int reply;  // which reply of the retrievals is spoilt
    Bytes bytes;
  };
  const std::vector<Row> rows{
      {"MODE", 1, {}},      {"MODE", 2, {1, 1}},       {"FIRMWARE", 3, {1}},  {"FIRMWARE", 4, {0, 75, 0}},
      {"HEADER(1)", 5, {}}, {"HEADER(1)", 14, {1, 2}}, {"HEADER(2)", 15, {}}, {"HEADER(2)", 30, {0, 0}}};
  OpenScreen();
  for (const auto& [what, struck, bytes] : rows) {
    SCOPED_TRACE(what + std::to_string(struck));
    logger.replies = 0;
    logger.spoil = [&, n = struck, b = bytes](Bytes& reply, microseconds&) {
      if (logger.replies == n) reply = b;
    };
    Choose("Data", "Download");
    Reads(std::string("Download ") + what + " parameters were not retrieved! Download failed!");
    EXPECT_TRUE(Offered("Data", "Download"));
    EXPECT_FALSE(machine.AnyPortOpen());
    EXPECT_EQ(Text("fraPBar"), "Download Progress");
  }
  EXPECT_TRUE(machine.fileQuestions.empty());
}

TEST_F(DownloadStory, APortThatDoesNotOpenIsReportedByItsOpening) {
  OpenScreen();
  machine.Unplug(1);
  Choose("Data", "Download");
  ReadsError("OpenCommPort");
  Reads("Download MODE parameters were not retrieved! Download failed!");
}

TEST_F(DownloadStory, BlankPagesEndTheDataAndPageZeroNeverDoes) {
  struct Row {
    const char* what;
    std::size_t blanks;  // bytes of 255 at the start of page 2
    std::size_t records;
  };
  OpenScreen();
  for (const auto& [what, blanks, records] : {Row{"six", 6, 1}, Row{"five", 5, 2}}) {
    SCOPED_TRACE(what);
    Store(2);
    logger.pages[0] = Bytes(264, 0xFF);
    logger.pages[2] = RampPage(7);
    std::fill_n(logger.pages[2].begin(), blanks, 0xFF);
    machine.WillAnswer(Answer::No);
    Begin();
    RunToTheEnd();
    ReadsCompletion();
    EXPECT_EQ(PagesInFile().size(), records);
  }
}

TEST_F(DownloadStory, AnErasedLoggerGivesTwelveLines) {
  OpenScreen();
  machine.WillAnswer(Answer::No);
  Begin();
  RunToTheEnd();
  ReadsCompletion();
  EXPECT_EQ(PagesInFile(), UpTo(0));
  const std::string text = FileText(path);
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 12);
  const std::string csv = FileText(DataFile("run.csv"));
  EXPECT_TRUE(csv.ends_with("\r\nLinear Channel = 3\r\nX angle,Y angle\r\n"));
}

TEST_F(DownloadStory, AFullLoggerEndsBehindPage2047) {
  OpenScreen();
  Store(2047);
  machine.WillAnswer(Answer::No);
  Begin();
  machine.wire.clear();
  RunToTheEnd();
  ReadsCompletion();
  EXPECT_EQ(PagesInFile(), UpTo(2047));
  EXPECT_EQ(machine.wire.size(), 2047 * 3U) << "each page is asked for once";
  EXPECT_EQ(machine.wire[300 * 3 - 2].byte, 0x01);
  EXPECT_EQ(machine.wire[300 * 3 - 1].byte, 0x2C) << "page 300";
}

TEST_F(DownloadStory, APageRequestKeepsItsPauses) {
  OpenScreen();
  Store(1);
  machine.WillAnswer(Answer::No);
  Begin();
  machine.wire.clear();
  machine.Pass(milliseconds(250));
  EXPECT_TRUE(machine.Transcript().starts_with("0 64|12 00|24 01")) << machine.Transcript();
  RunToTheEnd();
  ReadsCompletion();
}

TEST_F(DownloadStory, SpoiltRepliesAreAskedForAgain) {
  struct Row {
    const char* what;
    std::function<void(Bytes&, microseconds&)> spoil;
    bool warned;  // the warning stands until the first bytes of the repeat complete a threshold
  };
  const std::vector<Row> rows{
      {"one byte short", [](Bytes& reply, microseconds&) { reply.pop_back(); }, false},
      {"one byte long", [](Bytes& reply, microseconds&) { reply.push_back(1); }, false},
      {"doubled", [](Bytes& reply, microseconds&) { reply.insert(reply.end(), 264, 9); }, false},
      {"lost", [](Bytes& reply, microseconds&) { reply.clear(); }, true},
      {"late by 0.9 s", [](Bytes&, microseconds& delay) { delay = milliseconds(900); }, false},
      {"cut to nothing but one byte", [](Bytes& reply, microseconds&) { reply.resize(1); }, true},
  };
  OpenScreen();
  logger.chunk = 1;
  for (const auto& [what, spoil, warned] : rows) {
    SCOPED_TRACE(what);
    Store(5);
    machine.WillAnswer(Answer::No);
    Begin();
    const int third = logger.replies + 2;
    bool sawWarning = false;
    logger.spoil = [&, &change = spoil](Bytes& reply, microseconds& delay) {
      if (logger.replies == third) change(reply, delay);
    };
    for (int i = 0; i < 12000 && Running(); ++i) {
      machine.Pass(milliseconds(5));
      sawWarning = sawWarning || !The<QLabel>("lblWarning").isHidden();
    }
    ASSERT_FALSE(Running());
    EXPECT_EQ(sawWarning, warned);
    ReadsCompletion();
    EXPECT_EQ(PagesInFile(), UpTo(5));
    EXPECT_EQ(Record(2).substr(0, 12), "2.8,2.1,5.6,") << "page 2 begins with the bytes 2, 3, 4";
    logger.spoil = {};
  }
}

TEST_F(DownloadStory, ALateReplyBehindTheRepeatDoublesAPage) {
  OpenScreen();
  Store(4);
  machine.WillAnswer(Answer::No);
  Begin();
  const int first = logger.replies + 1;  // the reply for page 1
  Bytes held;
  logger.spoil = [&](Bytes& reply, microseconds& delay) {
    if (logger.replies == first) std::swap(held, reply);
    if (logger.replies != first + 1) return;
    logger.Send(held);
    delay = milliseconds(200);  // behind the late reply, with a silence between
  };
  RunToTheEnd();
  ReadsCompletion();
  EXPECT_EQ(PagesInFile(), UpTo(5)) << "nothing on the wire tells a late page from the next";
  EXPECT_EQ(Record(1), Record(2));
  EXPECT_NE(Record(2), Record(3));
}

TEST_F(DownloadStory, ALateReplyRightBeforeTheRepeatsIsDroppedWithIt) {
  OpenScreen();
  Store(4);
  machine.WillAnswer(Answer::No);
  Begin();
  const int first = logger.replies + 1;
  Bytes held;
  logger.spoil = [&](Bytes& reply, microseconds&) {
    if (logger.replies == first) std::swap(held, reply);
    if (logger.replies == first + 1) logger.Send(held);
  };
  RunToTheEnd();
  ReadsCompletion();
  EXPECT_EQ(PagesInFile(), UpTo(4));
  EXPECT_NE(Record(1), Record(2));
}

TEST_F(DownloadStory, ASilentLoggerIsAskedOnceASecondForAnHour) {
  OpenScreen();
  Store(3);
  Begin();
  machine.Pass(milliseconds(250));
  logger.silent = true;
  machine.Pass(milliseconds(1000));
  const auto before = logger.replies;
  machine.Pass(std::chrono::hours(1));
  EXPECT_NEAR(logger.replies - before, 3600, 60 * 3);  // each repeat also holds the thread for its pauses
  EXPECT_FALSE(The<QLabel>("lblWarning").isHidden());
  logger.silent = false;
  machine.WillAnswer(Answer::No);
  RunToTheEnd();
  ReadsCompletion();
  EXPECT_EQ(PagesInFile(), UpTo(3));
}

TEST_F(DownloadStory, CancelKeepsTheRecordsAndMakesNoCsv) {
  OpenScreen();
  Store(100);
  Begin();
  machine.Pass(milliseconds(1000));
  Choose("Data", "Download");
  EXPECT_FALSE(Running());
  EXPECT_FALSE(machine.AnyPortOpen());
  EXPECT_FALSE(PointerIsBusy());
  EXPECT_EQ(PagesInFile(), UpTo(5));
  EXPECT_FALSE(std::filesystem::exists(DataFile("run.csv")));
  EXPECT_TRUE(Shared.DataFileName.empty());
  EXPECT_FALSE(Shared.LiveSample.SavingToFile);
  const auto bytes = machine.wire.size();
  machine.Pass(milliseconds(5000));
  EXPECT_EQ(machine.wire.size(), bytes) << "the watchdog ended too";
}

TEST_F(DownloadStory, ReturnEndsARunningDownload) {
  OpenScreen();
  Store(100);
  Begin();
  machine.Pass(milliseconds(1000));
  Choose("Data", "Return");
  EXPECT_EQ(ScreenInFront(), "Main");
  EXPECT_FALSE(machine.AnyPortOpen());
  EXPECT_FALSE(PointerIsBusy());
  EXPECT_FALSE(Shared.LiveSample.SavingToFile);
  EXPECT_EQ(PagesInFile(), UpTo(5));
  Choose("Tools", "Download");
  EXPECT_TRUE(Offered("Data", "Download"));
}

TEST_F(DownloadStory, AVanishedLineIsReportedAndCanBeCancelled) {
  OpenScreen();
  Store(100);
  Begin();
  machine.Pass(milliseconds(1000));
  machine.Unplug(1);
  machine.Pass(milliseconds(3500));
  ReadsError("TimerSampling_Timer");
  EXPECT_TRUE(machine.boxes.empty()) << "the failed watchdog stays off";
  EXPECT_TRUE(The<QLabel>("lblWarning").isHidden()) << "nothing is attempted any more";
  Choose("Data", "Download");
  EXPECT_FALSE(Running());
  EXPECT_EQ(PagesInFile(), UpTo(5));
}

}  // namespace bexlow::test
