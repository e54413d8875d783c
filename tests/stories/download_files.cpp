// The files of a download, and what happens when a file cannot be written.
#include "stories/DownloadStory.h"

namespace bexlow::test {

TEST_F(DownloadStory, AFileThatTakesNothingLosesWholeRecordsInWords) {
  BeginForASecond();
  const auto file = std::exchange(Shared.DataFileName, DataFile("").string());
  machine.wire.clear();
  machine.whileBoxIsOpen = [&] {
    EXPECT_EQ(machine.wire.size(), 3U) << "the next request waited for the file";
    Shared.DataFileName = file;
    machine.Pass(5s);
  };
  while (machine.boxes.empty()) machine.Pass(1ms);
  EXPECT_NE(ReadsError("WriteDownloadPagesToFile").find("Is a directory"), std::string::npos);
  machine.Pass(900ms);
  EXPECT_EQ(PagesInFile(), UpTo(5)) << "the next box leaves the user time to stop";
  machine.Pass(200ms);
  EXPECT_EQ(PagesInFile(), (std::vector{1, 2, 3, 4, 5, 7}));
  EXPECT_EQ(machine.wire.size(), 6U) << "page 7 was asked for again while it waited";
  std::filesystem::rename(path, DataFile("moved.qbx"));
  machine.Pass(400ms);
  Choose("Data", "Download");
  EXPECT_EQ(PagesInFile(), (std::vector{8, 9, 10})) << "no header in the new file";
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
  machine.WillCancelFile();
  Choose("Data", "Download");
  Reads("Download operation cancelled!");  // the name that failed is forgotten
}

TEST_F(DownloadStory, TheCsvNeverReplacesTheDataFile) {
  Store(1);
  std::filesystem::create_symlink("run.qbx", DataFile("run.csv"));
  for (const auto* name : {"run.qbx", "other.csv"}) {
    Begin(name);
    machine.WillAnswer(Answer::No);
    RunToTheEnd();
    ReadsError("MakeLinearCSV");
    ReadsCompletion();
    EXPECT_EQ(PagesInFile(), UpTo(1));
  }
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
