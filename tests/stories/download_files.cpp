// What a download leaves in files, and what it leaves behind when there is none.
#include <csignal>
#include <sys/resource.h>

#include "stories/DownloadStory.h"

namespace bexlow::test {

/// Files take no more than so many bytes, as on a full disk.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit{bytes, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &before_); }

 private:
  rlimit before_{};
};

TEST_F(DownloadStory, AFullDiskLosesWholeRecordsInWords) {
  Store(3);
  machine.WillAnswer(Answer::No);
  Begin();
  {
    const FileSizeLimit limit(2000);  // the header and page 1
    machine.wire.clear();
    machine.whileBoxIsOpen = [&] { machine.Pass(5s); };
    RunToTheEnd();
  }
  for (std::size_t i = 2; i < machine.wire.size(); i += 3)
    EXPECT_EQ(machine.wire[i].at - machine.wire[i - 2].at, 24ms)
        << "a request waited for a box, page " << i / 3;
  for (int page = 2; page <= 3; ++page) {
    const auto text = ReadsError("WriteDownloadPagesToFile");
    EXPECT_NE(text.find("File too large"), std::string::npos) << text;
  }
  ReadsCompletion();
  EXPECT_EQ(PagesInFile(), UpTo(1));
  EXPECT_TRUE(FileText(path).ends_with("\r\n"));
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
    Reads(std::string("The data file cannot be created!\r\n") + why);
    Reads("No data file has been selected!");
    EXPECT_FALSE(Running());
    EXPECT_FALSE(Shared.LiveSample.SavingToFile);
    EXPECT_TRUE(Offered("Data", "Download"));
    ExpectIdle();
  }
}

TEST_F(DownloadStory, LiveSamplesOfAnotherTabStayOutOfTheFile) {
  for (const bool cancelled : {true, false}) {
    SCOPED_TRACE(cancelled);
    logger.pages.clear();
    Store(cancelled ? 100 : 2);
    Begin();
    if (cancelled) {
      machine.Pass(1s);
      Choose("Data", "Download");
    } else {
      Finish();
    }
    const auto text = FileText(path);
    outer->ShowChild(outer->Child("Main"));
    Choose("Display", "Angles");
    Choose("Data", "Sample");
    machine.Pass(1s);
    EXPECT_FALSE(Text("txtX").empty()) << "there were samples that could have been saved";
    Choose("Data", "Return");
    machine.Pass(1s);
    EXPECT_EQ(FileText(path), text);
    outer->ShowChild(outer->Child("DownloadErase"));
  }
}

TEST_F(DownloadStory, TheCsvNeverReplacesTheDataFile) {
  Store(1);
  machine.WillAnswer(Answer::No);
  Begin("run.csv");
  RunToTheEnd();
  ReadsError("MakeLinearCSV");
  ReadsCompletion();
  EXPECT_EQ(PagesInFile(), UpTo(1));
}

TEST_F(DownloadStory, ModesAndChannelsChooseTheRecord) {
  struct Row {
    int mode, channels;
    const char *head, *modeText, *channelText;
    std::ptrdiff_t commas;
    bool csv;
  };
  Store(1);
  for (const auto& [mode, channels, head, modeText, channelText, commas, csv] :
       {Row{0, 3, "Page,Data-->", "Bin", "", 132, false},
        Row{1, 1, "Page,X Data-->", "Linear", "1", 264, true},
        Row{1, 2, "Page,Y Data-->", "Linear", "2", 264, true}, Row{2, 3, "", "", "", 1, false}}) {
    SCOPED_TRACE(std::to_string(mode) + " " + std::to_string(channels));
    logger.eeprom[42] = static_cast<std::uint8_t>(mode);
    logger.eeprom[43] = static_cast<std::uint8_t>(channels);
    std::filesystem::remove(DataFile("run.csv"));
    Begin();
    EXPECT_EQ(Text("txtMode"), modeText);
    EXPECT_EQ(Text("txtChannels"), channelText);
    Finish();
    EXPECT_EQ(The<platform::CWGraph>("CWGraph1").Values().size(),
              head == std::string("Page,X Data-->") ? 264 : 0);
    EXPECT_EQ(The<platform::CWGraph>("CWGraph2").Values().size(),
              head == std::string("Page,Y Data-->") ? 264 : 0);
    EXPECT_NE(FileText(path).find(std::string("\r\n") + head + "\r\n1,"), std::string::npos);
    EXPECT_EQ(std::ranges::count(Record(1), ',') + 1, commas);
    EXPECT_EQ(std::filesystem::exists(DataFile("run.csv")), csv);
  }
}

TEST_F(DownloadStory, EventsWaitWhileABoxIsOpen) {
  BeginForASecond();
  const auto page = Shared.DownloadPageNumber;
  const double ticks = Shared.TimerAdvanceCount;
  machine.whileBoxIsOpen = [&] {
    machine.Pass(5300ms);
    EXPECT_EQ(Shared.DownloadPageNumber, page) << "a reply was handled behind an open box";
    EXPECT_EQ(Shared.TimerAdvanceCount, ticks);
    Choose("Data", "Download");
    EXPECT_TRUE(Running()) << "a click passed an open box";
  };
  platform::MsgBox("open for 5.3 seconds");
  Reads("open for 5.3 seconds");
  machine.Settle();
  EXPECT_EQ(Shared.DownloadPageNumber, page + 1) << "the reply waited and came once";
  EXPECT_EQ(Shared.TimerAdvanceCount, ticks + 1) << "five ticks make one";
  Choose("Data", "Download");
}

TEST_F(DownloadStory, YesHandsTheFileToGraph) {
  Store(2);
  machine.WillAnswer(Answer::Yes);
  Begin();
  RunToTheEnd();
  ReadsCompletion();
  EXPECT_EQ(ScreenInFront(), "Graph");
  EXPECT_EQ(Text("txtFileName"), path.string());
  EXPECT_FALSE(Shared.GraphAfterDownload);
  EXPECT_TRUE(Shared.DataFileName.empty());
  EXPECT_EQ(machine.fileQuestions.size(), 1U) << "Graph asks for no file";
}

}  // namespace bexlow::test
