// The four retrievals, the page loop with its watchdog, and the files that come of it.
#include "stories/DownloadStory.h"

namespace bexlow::test {

TEST_F(DownloadStory, AWholeDownloadGivesDataFileAndCsv) {
  Store(2);
  const auto start = machine.Time();
  Begin();
  EXPECT_EQ(machine.Transcript().substr(0, 72),
            "0 72|12 2A|262 72|274 2B|524 6C|1024 6D|1524 72|1536 64|1636 72|1648 65|");
  EXPECT_EQ(machine.wire.front().at - start, 250ms);
  // mode 250 first, then 262 a cell; firmware 500 each; ten cells and sixteen cells at 112
  EXPECT_EQ((machine.wire.at(58).at - start) / 1ms, 250 + 2 * 262 + 2 * 500 + 26 * 112);
  const auto& question = machine.fileQuestions.back();
  EXPECT_EQ(question.Filter, "All Files (*.*)|*.*|Text Files(*.txt)|*.txt|QBX Files (*.qbx)|*.qbx");
  EXPECT_EQ(std::tuple(question.FilterIndex, question.Flags, question.DefaultExt), std::tuple(3, 2, ""));
  EXPECT_TRUE(PointerIsBusy() && !Offered("Data", "Erase"));
  machine.wire.clear();
  machine.Pass(250ms);
  EXPECT_EQ(machine.Transcript().substr(0, 16), "0 64|12 00|24 01");
  Finish();
  const std::string begins =
      "Quornell Bexlow Data File Version 3.2.3\r\nDownload Pages\r\nFirmware Version: 3.3\r\n"
      "Serial Number: 417\r\nLaunch Time: 03/09/2004 14:05:07\r\nFirmware Sampling Frequency: 7.5\r\n"
      "Channel Gains: X=323 Y=408 Z=322\r\nChannel Offsets: X=323 Y=324 Z=322\r\nTares: X=61895 Y=0\r\n"
      "Bin/Linear Mode = 1\r\nLinear Channel = 3\r\nPage,X Data-->,Y Data-->\r\n1,1.4,1.4,4.2,2.8,";
  EXPECT_EQ(FileText(path).substr(0, begins.size()), begins);
  EXPECT_EQ(PagesInFile(), UpTo(2));
  EXPECT_LE(outer->minimumSizeHint().width(), 790) << "fits a screen of 800 pixels";
  const std::string csv = FileText(DataFile("run.csv"));
  EXPECT_TRUE(Contains(csv, "\r\nLinear Channel = 3\r\nX angle,Y angle\r\n1.4,1.4\r\n4.2,2.8\r\n"));
  EXPECT_EQ(std::count(csv.begin(), csv.end(), '\n'), 12 + 2 * 132);
  EXPECT_EQ(Texts("fraPBar", "txtPages", "txtTimeLeft"), "Download Progress|2 saved||");
  EXPECT_EQ(The<CWGraph>("CWGraph1").Values().size(), 264);
  EXPECT_TRUE(FindOffered(The("CWGraph1"), "Time on the Axis"));
  EXPECT_EQ(Shared.DataFileName, path.string());
  ExpectEnded();
}

TEST_F(DownloadStory, ARetrievalThatFailsStopsBeforeTheFile) {
  for (const auto& [what, struck, bytes] :  // the number of the reply that is spoilt
       {std::tuple{"MODE", 1, Bytes{}}, std::tuple{"MODE", 2, Bytes{1, 1}},
        std::tuple{"FIRMWARE", 3, Bytes{1}}, std::tuple{"FIRMWARE", 4, Bytes{0, 75, 0}},
        std::tuple{"HEADER(1)", 5, Bytes{}}, std::tuple{"HEADER(1)", 14, Bytes{1, 2}},
        std::tuple{"HEADER(2)", 15, Bytes{}}, std::tuple{"HEADER(2)", 30, Bytes{0, 0}}}) {
    SCOPED_TRACE(what + std::to_string(struck));
    logger.SpoilOne(struck, Instead(bytes));
    Choose("Data", "Download");
    Reads("Download "s + what + " parameters were not retrieved! Download failed!");
    EXPECT_TRUE(Offered("Data", "Download") && !machine.AnyPortOpen());
    EXPECT_EQ(Text("fraPBar"), "Download Progress");
  }
  for (const int bytes : {0, 3}) {
    logger.PlugFor(machine, 1, bytes);
    Choose("Data", "Download");
    if (bytes == 0) Reads("OpenCommPort");
    Reads("Download MODE parameters were not retrieved! Download failed!");
    EXPECT_FALSE(machine.AnyPortOpen());
  }
  EXPECT_TRUE(machine.fileQuestions.empty());
}

TEST_F(DownloadStory, BlankPagesEndTheDataAndPageZeroNeverDoes) {
  Store(2);
  logger.pages[0] = logger.pages[2] = Bytes(264, 0xFF);
  Begin();
  Finish();
  EXPECT_EQ(PagesInFile(), UpTo(1));
  logger.pages.clear();
  Begin();
  Finish();
  EXPECT_TRUE(FileText(path).ends_with("\r\nPage,X Data-->,Y Data-->\r\n"));
  EXPECT_TRUE(FileText(DataFile("run.csv")).ends_with("\r\nLinear Channel = 3\r\nX angle,Y angle\r\n"));
}

TEST_F(DownloadStory, AFullLoggerEndsBehindPage2047) {
  Store(2047);
  logger.eeprom[42] = 0;  // Bin: a long run of samples would only slow the preview down
  Begin();
  machine.wire.clear();
  Finish();
  EXPECT_EQ(PagesInFile(), UpTo(2047));
  EXPECT_EQ(machine.wire.size(), 2047 * 3U) << "each page is asked for once";
  EXPECT_EQ(machine.wire[256 * 3 - 2].byte * 256 + machine.wire[256 * 3 - 1].byte, 256);
}

TEST_F(DownloadStory, TheTimeLeftHoldsOnEveryLineAndInBothPlaces) {
  Store(300);
  logger.eeprom[42] = 0;
  using Row = std::tuple<const char*, VirtualLogger::Delivery, int, int, int>;  // milliseconds
  for (const auto& [line, delivery, late, lateFromPage100, aPage] :
       {Row{"plain", {}, 0, 0, 162}, Row{"an adapter", {264, 0ms, 16ms}, 0, 0, 176},
        Row{"a slow logger", {}, 78, 78, 240}, Row{"slower later", {}, 0, 78, 240}}) {
    SCOPED_TRACE(line);
    logger.delivery = delivery;
    logger.spoil = [&](Bytes&, microseconds& delay) {
      delay = milliseconds(Shared.DownloadPageNumber < 100 ? late : lateFromPage100);
    };
    Begin();
    for (int page = 0; page < 300; page = Shared.DownloadPageNumber) {
      int minutes = 0, seconds = 0;
      const std::string text = Text("txtTimeLeft");
      ASSERT_EQ(Status("lblActivity"),
                "Downloading, " + Text("fraPBar").substr(12) + (text.empty() ? "" : ", " + text + " left"));
      const int read = std::sscanf(text.c_str(), "at most %d min %d s", &minutes, &seconds);
      const milliseconds told = 60s * minutes + 1s * seconds, left = milliseconds(aPage) * (2048 - page);
      const bool mustHold = page > 0 && (page > 200 || late == lateFromPage100);
      ASSERT_TRUE(!mustHold || (read == 2 && told >= left)) << page << ": " << text;
      ASSERT_TRUE(page <= 200 || told < left + 3s) << page << ": " << text;
      machine.Pass(20ms);
    }
    Choose("Data", "Download");
  }
}

TEST_F(DownloadStory, SpoiltRepliesAreAskedForAgainHoweverTheLineDelivers) {
  struct Row {
    std::string what;
    Spoil spoil;
    // Asked for again by the watchdog; the warning stands until bytes of the repeat complete a threshold.
    bool late = false, warned = false;
  };
  const Row rows[] = {
      {"one byte short", [](Bytes& reply, microseconds&) { reply.pop_back(); }, true},
      {"one byte long", [](Bytes& reply, microseconds&) { reply.push_back(1); }},
      {"eight bytes in front", [](Bytes& reply, microseconds&) { reply.insert(reply.begin(), 8, 9); }},
      {"doubled", [](Bytes& reply, microseconds&) { reply.insert(reply.end(), 264, 9); }},
      {"tenfold", [](Bytes& reply, microseconds&) { reply.insert(reply.end(), 9 * 264, 9); }},
      {"lost", Instead({}), true, true},
      {"late by 0.9 s", [](Bytes&, microseconds& delay) { delay = 900ms; }},
      {"one byte of it", [](Bytes& reply, microseconds&) { reply.resize(1); }, true, true},
      {"one byte of it, then a stall", TornThenStalled(1), true, true},
      {"96 bytes of it, then a stall", TornThenStalled(96), true, true},
      {"all but one of it, then a stall", TornThenStalled(263), true}};
  for (const auto& [line, delivery] : {std::pair{"byte by byte", VirtualLogger::Delivery{1, 0ms, 1us}},
                                       {"a plain port", {8, ByteTime * 4, 1us}},
                                       {"an adapter", {1, 0ms, 16ms}}}) {
    logger.delivery = delivery;
    for (const auto& [what, spoil, late, warned] : rows)
      for (const int struck : {31, 33, 37}) {  // after 30 retrievals: page 0, page 2, the blank page
        SCOPED_TRACE(std::string(line) + ", " + what + ", reply " + std::to_string(struck));
        Store(5);
        machine.WillAnswer(Answer::No);
        logger.SpoilOne(struck, spoil);
        Begin();
        bool sawWarning = false;
        for (int i = 0; i < 12000 && Running(); ++i, machine.Pass(5ms))
          sawWarning = sawWarning || !The("lblWarning").isHidden();
        ASSERT_FALSE(Running());
        EXPECT_TRUE(struck != 33 || delivery.everyTick > 1us || sawWarning == warned);
        EXPECT_EQ(Text("lblRemark"),
                  !late && (struck != 31 || what != "late by 0.9 s")
                      ? ""
                      : "Asked again for page " + std::to_string(struck == 37 ? 6 : struck - 31) +
                            "; a page may be in the file twice, and those after it under a number too high.");
        ReadsCompletion();
        EXPECT_EQ(PagesInFile(), UpTo(5));
        EXPECT_EQ(LinesAfter(12)[1].substr(0, 14), "2,2.8,2.1,5.6,") << "of the bytes 2, 3, 4";
      }
  }
}

TEST_F(DownloadStory, AWholePageIsKeptWhereTheNextRequestFails) {
  for (const int heard : {1, 2}) {  // bytes of the request for page 4
    Store(5);
    logger.PlugFor(machine, 1, 58 + 4 * 3 + heard);  // behind the retrievals and four requests
    Begin();
    machine.Pass(4s);
    Reads("MSComm1_OnComm", "TimerSampling_Timer");
    WriteFile(DataFile("run.csv"), "of another logger");
    fs::last_write_time(DataFile("run.csv"), fs::last_write_time(DataFile("run.qbx")) - 1h);
    Choose("Data", "Download");
    EXPECT_EQ(PagesInFile(), UpTo(3));
    EXPECT_EQ(Text("lblRemark"), "run.csv is older than this file and belongs to an earlier download.");
  }
}

TEST_F(DownloadStory, ASilentLoggerIsAskedOnceASecondForAnHour) {
  Store(3);
  machine.Pass(400ms);  // so that no second begins during the pauses of a repeat
  Begin();
  machine.Pass(250ms);
  logger.silent = true;
  for (int i = 0; i < 900 && The<QLabel>("lblWarning").isHidden(); ++i) machine.Pass(10ms);
  EXPECT_EQ(machine.Now().seconds, Shared.LastReplyTime + 2) << "more than one whole second later";
  for (int i = 0; i < 50; ++i) {
    machine.Pass(100ms);
    EXPECT_FALSE(Contains(Status("lblActivity"), "stopped"));
  }
  const auto before = logger.replies;
  machine.Pass(1h);
  EXPECT_NEAR(logger.replies - before, 3600, 60 * 3);  // each repeat also holds the thread for its pauses
  EXPECT_FALSE(The<QLabel>("lblWarning").isHidden());
  --machine.clock.day;
  const auto atStep = logger.replies;
  machine.Pass(5s);
  EXPECT_GE(logger.replies - atStep, 3) << "the clock was set back";
  logger.silent = false;
  Finish();
  EXPECT_EQ(PagesInFile(), UpTo(3));
}

TEST_F(DownloadStory, CancelAndReturnKeepTheRecordsAndMakeNoCsv) {
  for (const auto& [entry, vanished] :
       {std::pair{"Download", false}, {"Download", true}, {"Return", false}}) {
    SCOPED_TRACE(std::string(entry) + (vanished ? " behind a vanished line" : ""));
    machine.Plug(logger, 1);
    BeginForASecond();
    if (vanished) {
      machine.Unplug(1);
      machine.Pass(3500ms);
      Reads("TimerSampling_Timer");
      EXPECT_FALSE(The("lblWarning").isHidden() || Shared.LiveSample.SavingToFile);
      EXPECT_EQ(Text("txtTimeLeft") + Status("lblActivity"), "Download has stopped, page 6");
      EXPECT_EQ(Status("lblConnection"), "The adapter of Comm 1 is gone");
    }
    Choose("Data", entry);
    EXPECT_TRUE(Shared.DataFileName.empty());
    EXPECT_EQ(PagesInFile(), UpTo(5));
    EXPECT_FALSE(fs::exists(DataFile("run.csv")));
    ExpectEnded();  // the watchdog, too
  }
  EXPECT_EQ(ScreenInFront(), "Main");
  Choose("Tools", "Download");
  EXPECT_TRUE(Offered("Data", "Download"));
}

TEST_F(DownloadStory, AFileThatTakesNothingLosesWholeRecordsInWords) {
  BeginForASecond();
  EXPECT_EQ(Text("txtBufferLen") + " bytes, tick " + Text("txtTimer"), "264 bytes, tick 1");
  const auto file = std::exchange(Shared.DataFileName, DataFile("").string());
  machine.wire.clear();
  machine.whileBoxIsOpen = [&] {
    EXPECT_EQ(machine.wire.size(), 3U) << "the next request waited for the file";
    Shared.DataFileName = file;
    machine.Pass(5s);
  };
  while (machine.boxes.empty()) machine.Pass(1ms);
  EXPECT_TRUE(Contains(Reads("WriteDownloadPagesToFile"), "Is a directory"));
  machine.Pass(900ms);
  EXPECT_EQ(PagesInFile(), UpTo(5)) << "the next box leaves the user time to stop";
  machine.Pass(200ms);
  EXPECT_EQ(PagesInFile(), (std::vector{1, 2, 3, 4, 5, 7}));
  EXPECT_EQ(machine.wire.size(), 6U) << "page 7 was asked for again while it waited";
  fs::rename(path, DataFile("moved.qbx"));
  machine.Pass(400ms);
  Choose("Data", "Download");
  EXPECT_EQ(PagesInFile(), (std::vector{8, 9, 10})) << "no header in the new file";
  EXPECT_EQ(Text("txtPages") + "; " + Text("lblRemark"), "3 saved, 1 lost; Not in the file: page 6.");
  EXPECT_TRUE(Contains(Shared.LastFailure, "run.qbx was gone and begins anew")) << Shared.LastFailure;
}

TEST_F(DownloadStory, NothingOfTheLoggerBeforeRemains) {
  Store(2);
  Begin();
  Finish();
  EXPECT_EQ(Texts("txtPages", "txtSerialNumber"), "2 saved|417|");
  logger.eeprom[101] = 0;
  const auto expectOther = [&] {
    EXPECT_EQ(Texts("txtSerialNumber", "txtDataFile", "txtPages", "txtTimeLeft", "txtBufferLen", "txtTimer"),
              "256||||||");
    EXPECT_TRUE(The<CWGraph>("CWGraph1").parentWidget()->parentWidget()->isHidden());
  };
  machine.whileBoxIsOpen = expectOther;
  machine.WillCancelFile();
  Choose("Data", "Download");
  Reads("Download operation cancelled!");
  expectOther();
  logger.silent = true;
  Choose("Data", "Download");
  Reads("Download MODE parameters were not retrieved! Download failed!");
  EXPECT_EQ(Text("txtSerialNumber") + Text("txtLaunchTime"), "");
}

TEST_F(DownloadStory, WithoutAFileNoPageIsAskedFor) {
  Store(1);
  // A device, a folder that is not there, and one that takes no files even from root.
  for (const auto& [name, why] : {std::pair{"/dev/full", "/dev/full is no regular file: Invalid argument"},
                                  {"/nowhere/run.qbx", "/nowhere/run.qbx: No such file or directory"},
                                  {"/sys/run.qbx", "/sys/run.qbx: Permission denied"}}) {
    SCOPED_TRACE(name);
    machine.WillChooseFile(name);
    Choose("Data", "Download");
    Reads("The data file cannot be created!\r\n"s + why, "No data file has been selected!");
    ExpectEnded();
  }
  machine.WillCancelFile();
  Choose("Data", "Download");
  Reads("Download operation cancelled!");  // the name that failed is forgotten
}

TEST_F(DownloadStory, TheCsvNeverReplacesTheDataFile) {
  Store(1);
  fs::create_symlink("run.qbx", DataFile("run.csv"));
  for (const auto* name : {"run.qbx", "other.csv"}) {
    Begin(name);
    machine.WillAnswer(Answer::No);
    RunToTheEnd();
    Reads("MakeLinearCSV");
    ReadsCompletion();
    EXPECT_EQ(PagesInFile(), UpTo(1));
  }
}

TEST_F(DownloadStory, ModesAndChannelsChooseTheRecord) {
  using Row = std::tuple<std::uint8_t, std::uint8_t, const char*, const char*, std::ptrdiff_t, int, int>;
  Store(1);
  for (const auto& [mode, channels, head, modeAndChannels, fields, xPoints, yPoints] :
       {Row{0, 3, "Page,Data-->", "Bin", 132, 0, 0}, Row{1, 1, "Page,X Data-->", "Linear1", 264, 264, 0},
        Row{1, 2, "Page,Y Data-->", "Linear2", 264, 0, 264}, Row{2, 3, "", "", 1, 0, 0}}) {
    SCOPED_TRACE(head);
    logger.eeprom[42] = mode;
    logger.eeprom[43] = channels;
    fs::remove(DataFile("run.csv"));
    Begin();
    EXPECT_EQ(Text("txtMode") + Text("txtChannels"), modeAndChannels);
    EXPECT_FALSE(FindOffered(The("CWGraph1"), "Whole Run")->isEnabled()) << "each page shows it again";
    Finish();
    const auto points = [this](const char* graph) { return The<CWGraph>(graph).Values().size(); };
    EXPECT_EQ(std::tuple(points("CWGraph1"), points("CWGraph2")), std::tuple(xPoints, yPoints));
    EXPECT_TRUE(Contains(FileText(path), "\r\n"s + head + "\r\n1,"));
    EXPECT_EQ(std::ranges::count(LinesAfter(12).front(), ','), fields);
    EXPECT_EQ(fs::exists(DataFile("run.csv")), mode == 1);
  }
}

TEST_F(DownloadStory, YesHandsTheFileToGraph) {
  Store(2);
  machine.WillAnswer(Answer::Yes);
  Begin();
  RunToTheEnd();
  ReadsCompletion();
  EXPECT_EQ(ScreenInFront() + Text("txtFileName"), "Graph" + path.string());
  EXPECT_FALSE(Shared.GraphAfterDownload || !Shared.DataFileName.empty());
  EXPECT_EQ(machine.fileQuestions.size(), 1U) << "Graph asks for no file";
}

}  // namespace bexlow::test
