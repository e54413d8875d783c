// What a download leaves in files, and what it leaves behind when there is none.
#include <QProgressBar>

#include "stories/DownloadStory.h"

namespace bexlow::test {

TEST_F(DownloadStory, AFullDiskLosesARecordInWords) {
  OpenScreen();
  Store(2);
  machine.WillAnswer(Answer::No);
  Begin();
  std::filesystem::remove(path);
  std::filesystem::create_symlink("/dev/full", path);
  machine.Pass(milliseconds(3000));
  const auto text = ReadsError("WriteDownloadPagesToFile");
  EXPECT_NE(text.find("No space left on device"), std::string::npos) << text;
  EXPECT_NE(text.find("Screen: General"), std::string::npos) << text;
  ReadsError("WriteDownloadPagesToFile");
  ReadsError("MakeLinearCSV");
  ReadsCompletion();
  EXPECT_FALSE(std::filesystem::exists(DataFile("run.csv")))
      << "a data file that cannot be read makes no CSV file";
}

TEST_F(DownloadStory, WithoutAFileNoPageIsAskedFor) {
  OpenScreen();
  Store(1);
  // A full disk, a folder that is not there, and one that takes no files even from root.
  for (const char* name : {"/dev/full", "/nowhere/run.qbx", "/sys/run.qbx"}) {
    SCOPED_TRACE(name);
    machine.WillChooseFile(name);
    Choose("Data", "Download");
    Reads("No data file has been selected!");
    EXPECT_FALSE(Running());
    EXPECT_FALSE(Shared.LiveSample.SavingToFile);
    EXPECT_FALSE(machine.AnyPortOpen());
    EXPECT_FALSE(PointerIsBusy());
    EXPECT_TRUE(Offered("Data", "Download"));
  }
}

TEST_F(DownloadStory, LiveSamplesOfAnotherTabStayOutOfTheFile) {
  OpenScreen();
  Store(100);
  for (const bool cancelled : {true, false}) {
    SCOPED_TRACE(cancelled);
    Store(cancelled ? 100 : 2);
    if (!cancelled) logger.pages.erase(3);
    Begin();
    machine.Pass(milliseconds(1000));
    if (cancelled) {
      Choose("Data", "Download");
    } else {
      ReadsCompletion();
    }
    const auto text = FileText(path);
    outer->ShowChild(outer->Child("Main"));
    Choose("Display", "Angles");
    Choose("Data", "Sample");
    machine.Pass(milliseconds(1000));
    EXPECT_FALSE(Text("txtX").empty()) << "there were samples that could have been saved";
    Choose("Data", "Return");
    machine.Pass(milliseconds(1000));
    EXPECT_EQ(FileText(path), text);
    outer->ShowChild(outer->Child("DownloadErase"));
    machine.WillAnswer(Answer::No);
  }
}

TEST_F(DownloadStory, TheCsvNeverReplacesTheDataFile) {
  OpenScreen();
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
  OpenScreen();
  for (const auto& [mode, channels, head, modeText, channelText, commas, csv] :
       {Row{0, 3, "Page,Data-->", "Bin", "", 132, false},
        Row{1, 1, "Page,X Data-->", "Linear", "1", 264, true},
        Row{1, 2, "Page,Y Data-->", "Linear", "2", 264, true}, Row{1, 4, "", "Linear", "4", 1, true},
        Row{2, 3, "", "", "", 1, false}}) {
    SCOPED_TRACE(std::to_string(mode) + " " + std::to_string(channels));
    Store(1);
    logger.eeprom[42] = static_cast<std::uint8_t>(mode);
    logger.eeprom[43] = static_cast<std::uint8_t>(channels);
    std::filesystem::remove(DataFile("run.csv"));
    machine.WillAnswer(Answer::No);
    Begin();
    EXPECT_EQ(Text("txtMode"), modeText);
    EXPECT_EQ(Text("txtChannels"), channelText);
    RunToTheEnd();
    ReadsCompletion();
    const std::string text = FileText(path);
    const auto record = text.rfind("\n1,");
    ASSERT_NE(record, std::string::npos);
    EXPECT_TRUE(text.substr(0, record + 1).ends_with(std::string("\r\n") + head + "\r\n"));
    EXPECT_EQ(std::count(text.begin() + static_cast<std::ptrdiff_t>(record), text.end(), ','), commas);
    EXPECT_EQ(std::filesystem::exists(DataFile("run.csv")), csv);
  }
}

TEST_F(DownloadStory, EventsWaitWhileABoxIsOpen) {
  OpenScreen();
  Store(100);
  Begin();
  machine.Pass(milliseconds(1000));
  const auto page = Shared.DownloadPageNumber;
  const double ticks = Shared.TimerAdvanceCount;
  machine.whileBoxIsOpen = [&] {
    machine.Pass(milliseconds(5300));
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
  OpenScreen();
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
