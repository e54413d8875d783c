#include "shell/RunsTable.h"

#include <QDateTime>
#include <QEvent>
#include <QFile>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QHeaderView>
#include <QTimer>

#include <algorithm>
#include <array>
#include <system_error>
#include <utility>

#include "files/RunEntry.h"
#include "platform/graph/CWGraphTicks.h"
#include "platform/machine/EventGate.h"
#include "platform/machine/Folders.h"
#include "platform/machine/TextFile.h"

namespace bexlow::shell {

namespace fs = std::filesystem;
using platform::EventGate;

namespace {

enum Column { Name, Launched, Logger, Kind, Duration, LastPage, Remarks, Columns };
constexpr std::array<std::pair<const char*, const char*>, Columns> Heads{
    {{"Name", "Name of the data file"},
     {"Launched",
      "When the logger was launched; where the file tells none it stands at the time of the file"},
     {"Logger", "Serial number of the logger"},
     {"Kind", "Kind and channels"},
     {"Duration", "From the launch, or the first sample saved, to the last; h:mm:ss, to the nearest second"},
     {"Last page", "Number of the last page"},
     {"Remarks", "What the beginning and the end of the file tell; pages in between are not looked at"}}};
constexpr int SortRole = Qt::UserRole + 1, PathRole = Qt::UserRole + 2;
constexpr std::chrono::milliseconds RenewEvery{1000};  // a file may grow at each of 370 samples a second

bool IsNumber(int column) {
  return column == Logger || column == Duration || column == LastPage;
}

QString Shown(const fs::path& path) {
  return QFile::decodeName(path.c_str());
}

files::RunEntry Look(const fs::path& path) {
  try {
    const auto ends = platform::ReadEnds(path, files::HeadBytes, files::TailBytes);
    return files::ReadRunEntry(ends.head, ends.tail, ends.size);
  } catch (const std::system_error& error) {
    files::RunEntry entry;
    entry.remark = error.code().message();
    return entry;
  }
}

}  // namespace

RunsTable::RunsTable(QWidget* page, std::function<void(const std::string& path)> open)
    : QTreeView(page), model_(0, Columns), renewal_(platform::Machine::Get().MakeAlarm([this] {
        EventGate::Get().Offer(this, {nullptr, "tblRuns_Timer"}, [this] { Renew(); });
      })) {
  setObjectName("tblRuns");
  setAccessibleName("Data Files");
  for (int column = 0; column < Columns; ++column) {
    auto* head = new QStandardItem(Heads[static_cast<std::size_t>(column)].first);
    head->setToolTip(Heads[static_cast<std::size_t>(column)].second);
    if (IsNumber(column)) head->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    model_.setHorizontalHeaderItem(column, head);
  }
  model_.setSortRole(SortRole);
  setModel(&model_);
  setRootIsDecorated(false);
  setStyleSheet("QTreeView::item { padding: 2px 6px; }");
  setUniformRowHeights(true);
  setTextElideMode(Qt::ElideMiddle);
  header()->setDefaultSectionSize(header()->minimumSectionSize());
  setAllColumnsShowFocus(true);
  setEditTriggers(NoEditTriggers);
  setSortingEnabled(true);
  sortByColumn(Launched, Qt::DescendingOrder);
  connect(this, &QTreeView::activated, this, [this, open = std::move(open)](const QModelIndex& index) {
    const auto path = index.siblingAtColumn(Name).data(PathRole).toByteArray().toStdString();
    EventGate::Get().Click(
        this, [&] { open(path); }, "tblRuns_DblClick");
  });
  std::error_code unknown;
  setVisible(!fs::is_empty(platform::DataFilesFolder(), unknown) && !unknown);
  page->installEventFilter(this);
}

RunsTable::~RunsTable() {
  EventGate::Get().Withdraw(this);
}

void RunsTable::keyboardSearch(const QString& typed) {
  if (currentIndex().isValid()) setCurrentIndex(currentIndex().siblingAtColumn(Name));
  QTreeView::keyboardSearch(typed);
}

// The folder is read behind a frame, so that the page is there at once, and not while another screen is in
// front, which may save hundreds of records a second.
bool RunsTable::eventFilter(QObject* watched, QEvent* event) {
  if (watched != parentWidget()) return QTreeView::eventFilter(watched, event);
  if (event->type() == QEvent::Hide) {
    watcher_.reset();
    EventGate::Get().Withdraw(this);
    renewal_->Stop();
  } else if (event->type() == QEvent::Paint && watcher_ == nullptr) {
    watcher_ = std::make_unique<QFileSystemWatcher>();
    QTimer::singleShot(0, watcher_.get(), [this] { Follow(); });
  }
  return false;
}

void RunsTable::Follow() {
  const auto change = [this] {
    if (!std::exchange(due_, true)) renewal_->Start(RenewEvery);
  };
  connect(watcher_.get(), &QFileSystemWatcher::directoryChanged, this, change);
  connect(watcher_.get(), &QFileSystemWatcher::fileChanged, this, change);
  watcher_->addPath(Shown(platform::DataFilesFolder()));
  Renew();
  QStringList all;
  for (const auto& [path, row] : rows_) all << Shown(path);
  if (!all.isEmpty()) watcher_->addPaths(all);
}

// Reads the files that are new or have changed.
void RunsTable::Renew() {
  renewal_->Stop();
  due_ = false;
  std::map<fs::path, Row> gone;
  gone.swap(rows_);
  QStringList changed;
  std::error_code unknown;
  fs::directory_iterator file(platform::DataFilesFolder(), unknown);
  for (; file != fs::directory_iterator(); file.increment(unknown)) {
    if (!file->is_regular_file(unknown) || file->path().extension() == ".csv") continue;
    Row now{file->file_size(unknown), file->last_write_time(unknown), {}};
    auto& row = rows_[file->path()];
    if (auto known = gone.extract(file->path())) row = known.mapped();
    if (row.size == now.size && row.written == now.written) continue;
    now.cells = row.cells;
    row = now;
    changed << Shown(file->path());
    Fill(file->path(), row);
  }
  for (const auto& [path, row] : gone)
    if (!row.cells.isEmpty()) model_.removeRow(row.cells.front()->row());
  if (!changed.isEmpty()) ShowChanged(changed);
  setVisible(model_.rowCount() > 0);
}

// A file may grow between the look at it and the beginning of the watch.
void RunsTable::ShowChanged(const QStringList& files) {
  watcher_->addPaths(files);
  due_ = true;
  renewal_->Start(RenewEvery);
  model_.sort(header()->sortIndicatorSection(), header()->sortIndicatorOrder());
  const int widest = std::max(header()->sectionSizeHint(Name), viewport()->width() / 4);
  for (int column = 0; column < Remarks; ++column) {
    const int needed = std::max(header()->sectionSizeHint(column), sizeHintForColumn(column));
    setColumnWidth(column, std::max(columnWidth(column), column == Name ? std::min(needed, widest) : needed));
  }
}

void RunsTable::Fill(const fs::path& path, Row& row) {
  const auto entry = Look(path);
  const bool isNew = row.cells.isEmpty();
  if (isNew && entry.kind.empty() && path.extension() != ".qbx")
    return;  // a picture, or a text of the user's
  const auto tip = "<span>" + Shown(path).toHtmlEscaped() + "<br>" +
                   QString::fromStdString(entry.remark).toHtmlEscaped() + "</span>";
  for (int column = 0; isNew && column < Columns; ++column) row.cells << new QStandardItem;
  const auto set = [&](Column column, const QString& text, const QVariant& rank) {
    auto* cell = row.cells[column];
    cell->setText(text);
    cell->setData(rank, SortRole);
    cell->setToolTip(tip);
    if (IsNumber(column)) cell->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
  };
  const auto name = Shown(path.filename());
  set(Name, name, name.toLower());
  row.cells[Name]->setData(QByteArray::fromStdString(path.string()), PathRole);
  const auto launched = QString::fromStdString(entry.launched);
  const auto fileTime = QFileInfo(Shown(path)).lastModified().toString("yyyy-MM-dd HH:mm:ss");
  set(Launched, launched.section(':', 0, 1), launched.isEmpty() ? fileTime : launched);
  const auto number = QString::fromStdString(entry.serialNumber);
  set(Logger, number, number.isEmpty() ? QVariant() : number.toDouble());
  set(Kind, QString::fromStdString(entry.kind), QString::fromStdString(entry.kind));
  const auto seconds = entry.seconds;
  set(Duration, seconds ? platform::DurationClock(*seconds) : QString(), seconds ? *seconds : QVariant());
  const auto page = entry.lastPage;
  set(LastPage, page > 0 ? QString::number(page) : QString(), page > 0 ? page : QVariant());
  set(Remarks, QString::fromStdString(entry.remark), QString::fromStdString(entry.remark));
  if (isNew) model_.appendRow(row.cells);
}

}  // namespace bexlow::shell
