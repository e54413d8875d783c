// The table of data files on the Main page, which follows the folder.
#include <sys/stat.h>

#include "support/Story.h"

namespace bexlow::test {

struct Runs : Story {
  /// The table's rows, fields parted by bars.
  std::vector<std::string> Rows() {
    static const QRegularExpression saved("saved 20..-..-.. ..:..");
    const auto& model = *The<QTreeView>("tblRuns").model();
    std::vector<std::string> rows;
    for (int row = 0; row < model.rowCount(); ++row) {
      QStringList fields;
      for (int column = 0; column < model.columnCount(); ++column)
        fields << model.index(row, column).data().toString().replace(saved, "saved");
      rows.push_back(fields.join('|').toStdString());
    }
    return rows;
  }
  /// The system tells of a changed folder in its own time.
  void Becomes(const std::vector<std::string>& rows) {
    for (int i = 0; i < 1000 && Rows() != rows; ++i) {
      QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
      machine.Pass(1s);
      if (Rows() != rows) ::usleep(5000);
    }
    EXPECT_EQ(Rows(), rows);
    EXPECT_EQ(The<QTreeView>("tblRuns").isVisible(), !rows.empty()) << "an empty folder shows no table";
  }
  static std::string Later(const std::string& text) { return Replaced(text, "/2004", "/2005"); }
  const std::string OnePage = Header() + Record("1", 264, "1");
};

TEST_F(Runs, FollowTheFolder) {
  Start();
  Becomes({});
  WriteFile(DataFile("old.qbx"), OnePage);
  const std::string old = "old.qbx|2004-03-09 14:05||Linear X and Y|0:00:18|1|";
  Becomes({old});
  WriteFile(DataFile("new.qbx"), Later(OnePage));
  WriteFile(DataFile("new.csv"), Later(Header()));
  Becomes({"new.qbx|2005-03-09 14:05||Linear X and Y|0:00:18|1|", old});
  machine.Pass(10s);  // from here on only the file's own change can tell of it
  Append(DataFile("new.qbx"), Record("3", 264, "1"));
  Becomes({"new.qbx|2005-03-09 14:05||Linear X and Y|0:00:53|3|page 2 is missing", old});
  Choose("Help", "About");
  Close();
  fs::remove(DataFile("new.qbx"));
  Becomes({old});
  fs::rename(DataFile("old.qbx"), DataFile("away"));
  Becomes({"away|2004-03-09 14:05||Linear X and Y|0:00:18|1|"});
  fs::remove(DataFile("away"));
  Becomes({});
}

TEST_F(Runs, TellHostileFilesInTheirRows) {
  Start();
  WriteFile(DataFile("a.qbx"), OnePage + "2,1");
  std::string again = Shortened(Header("", "", "Angles"), 10);
  for (int i = 0; i < 700; ++i) again += "10,1,1\r\n";
  WriteFile(DataFile("again.qbx"), again + "2,1,1\r\n");
  WriteFile(DataFile("b.qbx"), std::string(100'000, ','));
  WriteFile(DataFile("c.qbx"), "");
  WriteFile(DataFile("picture.png"), "PNG");
  ASSERT_EQ(::mkfifo(DataFile("pipe.qbx").c_str(), 0600), 0);
  fs::create_directory(DataFile("folder.qbx"));
  fs::create_symlink("/dev/zero", DataFile("zero.qbx"));
  fs::create_symlink("round.qbx", DataFile("round.qbx"));
  The<QTreeView>("tblRuns").sortByColumn(0, Qt::AscendingOrder);
  std::vector<std::string> rows{
      "a.qbx|2004-03-09 14:05||Linear X and Y|0:00:18|1|ends in the middle of a record",
      "again.qbx|saved||Angles|0:00:02||line 711 starts the time again", "b.qbx|saved|||||not a data file",
      "c.qbx|saved|||||empty"};
  Becomes(rows);
  if (::geteuid() == 0) return;  // may read all
  WriteFile(DataFile("d.qbx"), Header());
  fs::permissions(DataFile("d.qbx"), fs::perms::none);
  rows.push_back("d.qbx|saved|||||Permission denied");
  Becomes(rows);
}

// A failed graph fails under its own name, not the page's; files are told by the bytes of a name.
TEST_F(Runs, AreFoundByNameAndOpenInTheGraphThatFits) {
  Start();
  WriteFile(DataFile("anna.qbx"), Later(OnePage));
  WriteFile(DataFile("pushes.qbx"), Header() + Record("1", 264, "BP"));
  WriteFile(DataFile("x\xE9.qbx"), OnePage);
  WriteFile(DataFile("z.qbx"), Header() + Record("1", 263, "1"));
  Becomes({"anna.qbx|2005-03-09 14:05||Linear X and Y|0:00:18|1|",
           "pushes.qbx|2004-03-09 14:05||Linear X and Y|0:00:18|1|",
           "x\xEF\xBF\xBD.qbx|2004-03-09 14:05||Linear X and Y|0:00:18|1|",
           "z.qbx|2004-03-09 14:05||Linear X and Y||1|the last record is damaged"});
  auto& table = The<QTreeView>("tblRuns");
  for (const auto& [typed, screen, points, failure] : {std::tuple{"an", "Graph", 132U, ""},
                                                       {"pu", "GraphBP", 132U, ""},
                                                       {"z", "Graph", 0U, "Graph"},
                                                       {"x", "Graph", 132U, ""}}) {
    SCOPED_TRACE(typed);
    Front("Main");
    table.setFocus();
    table.setCurrentIndex(table.model()->index(0, 3));
    table.clearSelection();
    table.keyboardSearch("");  // forgets what was typed before
    TypeInto(table, typed);
    Key(Qt::Key_Delete);
    Key(Qt::Key_Return);
    if (points == 0) Reads("BuildDoubleChannelArrays");
    EXPECT_EQ(ScreenInFront(), screen);
    EXPECT_EQ(The<CWGraph>("CWGraph1").Values().size(), points);
    EXPECT_EQ(Shared.LastFailure.empty() ? "" : Shared.LastFailureScreen, failure);
  }
  EXPECT_EQ(table.model()->rowCount(), 4);
  EXPECT_TRUE(fs::exists(DataFile("anna.qbx")));
}

}  // namespace bexlow::test
