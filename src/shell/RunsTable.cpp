#include "shell/RunsTable.h"

#include <QDateTime>
#include <QEvent>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QHeaderView>
#include <QTimer>

#include <algorithm>
#include <utility>

#include "files/RunEntry.h"
#include "files/Series.h"
#include "platform/machine/EventGate.h"
#include "platform/machine/Machine.h"
#include "platform/machine/System.h"
#include "values/NumberText.h"

namespace bexlow::shell {

namespace fs = std::filesystem;
using platform::EventGate;

namespace {

enum Column { Name, Launched, Logger, Kind, Duration, LastPage, Remarks, Columns };
struct Head {
  const char *caption, *tip;
  Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter;
};
constexpr auto Right = Qt::AlignRight | Qt::AlignVCenter;  // of numbers
constexpr Head Heads[Columns] = {
    {"Name", "Name of the data file"},
    {"Launched", "When the logger was launched; where the file tells none, when it was saved"},
    {"Logger", "Serial number of the logger"},
    {"Kind", "Kind and channels"},
    {"Duration", "From the launch, or the first sample saved, to the last; h:mm:ss, to the nearest second",
     Right},
    {"Last page", "Number of the last page", Right},
    {"Remarks", "What the beginning and the end of a download tell, and all of a recording below 2 MB"}};
constexpr int RankRole = Qt::UserRole;                 // what a column is sorted by
constexpr std::uintmax_t LongestRecording = 2 << 20;   // six minutes of Angles; read in some 8 ms
constexpr std::chrono::milliseconds RenewEvery{1000};  // a file may grow at each of 370 samples a second

QString Shown(const fs::path& path) { return QFile::decodeName(path.c_str()); }

files::RunEntry Look(const fs::path& path) {
  try {
    const auto ends = platform::ReadEnds(path, files::HeadBytes, files::TailBytes);
    if (files::RecordingKind(ends.head) && ends.size <= LongestRecording) {
      const auto text = platform::ReadWhole(path);
      return files::ReadRunEntry(text, {}, text.size());
    }
    return files::ReadRunEntry(ends.head, ends.tail, ends.size);
  } catch (const std::system_error& error) {
    return {"", "", "", {}, 0, error.code().message()};
  }
}

/// A file as it was when it was read, and its row; a file that is no data file has no place in the table.
struct Row : QTreeWidgetItem {
  fs::path path;
  std::uintmax_t size = 0;
  fs::file_time_type written;

  bool operator<(const QTreeWidgetItem& other) const override {
    const bool rises = treeWidget()->header()->sortIndicatorOrder() == Qt::AscendingOrder;
    const auto rank = data(treeWidget()->sortColumn(), RankRole);
    const auto next = other.data(treeWidget()->sortColumn(), RankRole);
    const auto name = data(Name, RankRole).toString(), otherName = other.data(Name, RankRole).toString();
    if (rank == next) return rises ? name < otherName : otherName < name;
    if (rank.isValid() != next.isValid()) return rank.isValid() == rises;  // what is not known comes last
    return QVariant::compare(rank, next) == QPartialOrdering::Less;
  }

  void Read() {
    const auto entry = Look(path);
    if (treeWidget() == nullptr && entry.kind.empty() && path.extension() != ".qbx")
      return;  // a picture, or a text of the user's
    const auto name = Shown(path.filename());
    const auto launched = QString::fromStdString(entry.launched);
    const auto fileTime = QFileInfo(Shown(path)).lastModified().toString("yyyy-MM-dd HH:mm");
    const auto number = QString::fromStdString(entry.serialNumber), kind = QString::fromStdString(entry.kind);
    const auto seconds = entry.seconds;
    const auto page = entry.lastPage;
    const auto remark = QString::fromStdString(entry.remark);
    const auto tip = "<span>" + Shown(path).toHtmlEscaped() + "<br>" + remark.toHtmlEscaped() + "</span>";
    const std::pair<QString, QVariant> cells[Columns] = {
        // text and rank
        {name, name.toLower()},
        {launched.isEmpty() ? "saved " + fileTime : launched.section(':', 0, 1),
         launched.isEmpty() ? fileTime : launched},
        {number, number.isEmpty() ? QVariant() : number.toDouble()},
        {kind, kind},
        {QString::fromStdString(seconds ? values::DurationClock(*seconds) : ""),
         seconds ? *seconds : QVariant()},
        {page > 0 ? QString::number(page) : QString(), page > 0 ? page : QVariant()},
        {remark, remark.isEmpty() ? QVariant() : remark}};
    for (int column = 0; column < Columns; ++column) {
      setText(column, cells[column].first);
      setData(column, RankRole, cells[column].second);
      setToolTip(column, tip);
      setTextAlignment(column, Heads[column].alignment);
    }
  }
};

class RunsTable : public QTreeWidget {
 public:
  RunsTable(QWidget* page, std::function<void(const std::string& path)> open)
      : QTreeWidget(page), renewal_(platform::Machine::Get().MakeAlarm([this] {
          EventGate::Get().Offer(this, {nullptr, "tblRuns_Timer"}, [this] { Renew(); });
        })) {
    setObjectName("tblRuns");
    setAccessibleName("Data Files");
    for (int column = 0; const auto& head : Heads) {
      headerItem()->setText(column, head.caption);
      headerItem()->setToolTip(column, head.tip);
      headerItem()->setTextAlignment(column++, head.alignment == Right ? Qt::AlignCenter : head.alignment);
    }
    setRootIsDecorated(false);
    setStyleSheet(
        "QTreeView::item { padding: 2px 4px; border: 0; }"  // without a border there is no padding aside
        "QTreeView::item:selected { background: palette(highlight); color: palette(highlighted-text); }");
    setUniformRowHeights(true);
    setTextElideMode(Qt::ElideMiddle);
    header()->setDefaultSectionSize(header()->minimumSectionSize());
    header()->setStretchLastSection(false);
    setAllColumnsShowFocus(true);
    setSortingEnabled(true);
    sortByColumn(Launched, Qt::DescendingOrder);
    connect(this, &QTreeWidget::itemActivated, this, [this, open = std::move(open)](QTreeWidgetItem* item) {
      const auto path = static_cast<const Row*>(item)->path.string();
      EventGate::Get().Click(
          this, [&] { open(path); }, "tblRuns_DblClick");
    });
    std::error_code unknown;
    setVisible(!fs::is_empty(platform::DataFilesFolder(), unknown) && !unknown);
    page->installEventFilter(this);
  }

  ~RunsTable() override { EventGate::Get().Withdraw(this); }

 protected:
  void resizeEvent(QResizeEvent* event) override {
    QTreeWidget::resizeEvent(event);
    FitRemarks();
  }

  void keyboardSearch(const QString& typed) override {
    if (currentIndex().isValid()) setCurrentIndex(currentIndex().siblingAtColumn(Name));
    QTreeWidget::keyboardSearch(typed);
  }

  // The folder is read after a frame, so that the page is there at once, and not while another screen is in
  // front, which may save hundreds of records a second.
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched != parentWidget()) return QTreeWidget::eventFilter(watched, event);
    if (event->type() == QEvent::Hide) {
      watcher_.reset();
      EventGate::Get().Withdraw(this);
      renewal_->Stop();
    } else if (event->type() == QEvent::Paint && watcher_ == nullptr) {
      watcher_ = std::make_unique<QFileSystemWatcher>();
      for (const auto changed : {&QFileSystemWatcher::directoryChanged, &QFileSystemWatcher::fileChanged})
        connect(watcher_.get(), changed, this, [this] { RenewSoon(); });
      QTimer::singleShot(0, watcher_.get(), [this] { Renew(); });
    }
    return false;
  }

 private:
  void RenewSoon() {
    if (!std::exchange(due_, true)) renewal_->Start(RenewEvery);
  }

  // Reads the files that are new or have changed. A file may grow between the look at it and the beginning of
  // the watch: then it is looked at again.
  void Renew() {
    renewal_->Stop();
    due_ = false;
    setSortingEnabled(false);
    const bool first = watcher_->directories().isEmpty();
    if (first) watcher_->addPath(Shown(platform::DataFilesFolder()));
    decltype(rows_) before;
    before.swap(rows_);
    QStringList watched;
    std::error_code unknown;
    fs::directory_iterator file(platform::DataFilesFolder(), unknown);
    for (; file != fs::directory_iterator(); file.increment(unknown)) {
      if (!file->is_regular_file(unknown) || file->path().extension() == ".csv") continue;
      auto& row = rows_[file->path()];
      if (auto known = before.extract(file->path())) row = std::move(known.mapped());
      if (row == nullptr) row = std::make_unique<Row>();
      const auto size = std::exchange(row->size, file->file_size(unknown));
      const auto written = std::exchange(row->written, file->last_write_time(unknown));
      const bool changed = row->size != size || row->written != written;
      if (changed || first) watched << Shown(row->path = file->path());
      if (!changed) continue;
      row->Read();
      if (row->treeWidget() == nullptr && !row->text(Name).isEmpty()) addTopLevelItem(row.get());
    }
    before.clear();  // takes the rows of files that are gone out of the table
    setSortingEnabled(true);
    if (!watched.isEmpty()) {
      watcher_->addPaths(watched);
      RenewSoon();
      FitColumns();
    }
    setVisible(topLevelItemCount() > 0);
  }

  void FitColumns() {
    constexpr int Gap = 8;
    const int widest = viewport()->width() / 4;
    for (int column = 0; column < Remarks; ++column) {
      const int head = header()->sectionSizeHint(column) + Gap;
      setColumnWidth(column,
                     std::max({columnWidth(column), head, std::min(sizeHintForColumn(column), widest)}));
    }
    remarks_ = sizeHintForColumn(Remarks);
    FitRemarks();
  }

  // They are the ones that must be read: a narrow window scrolls to their end.
  void FitRemarks() {
    setColumnWidth(Remarks, std::max(remarks_, viewport()->width() - header()->sectionPosition(Remarks)));
  }

  std::map<fs::path, std::unique_ptr<Row>> rows_;
  std::unique_ptr<QFileSystemWatcher> watcher_;
  std::unique_ptr<platform::Alarm> renewal_;
  bool due_ = false;  ///< a renewal
  int remarks_ = 0;   ///< their width in pixels
};

}  // namespace

QTreeWidget* MakeRunsTable(QWidget* page, std::function<void(const std::string& path)> open) {
  return new RunsTable(page, std::move(open));
}

}  // namespace bexlow::shell
