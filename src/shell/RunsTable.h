// The data files of the folder "Data Files" as a table, which follows the folder while it is on show.
#pragma once

#include <QStandardItemModel>
#include <QTreeView>

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "platform/machine/Machine.h"

class QFileSystemWatcher;

namespace bexlow::shell {

class RunsTable : public QTreeView {
  Q_OBJECT

 public:
  /// @param open  called with the path of a row that the user opens
  RunsTable(QWidget* page, std::function<void(const std::string& path)> open);
  ~RunsTable() override;

 protected:
  void keyboardSearch(const QString& typed) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// A file as it was when it was read.
  struct Row {
    std::uintmax_t size = 0;
    std::filesystem::file_time_type written;
    QList<QStandardItem*> cells;
  };

  void Follow();
  void Renew();
  void ShowChanged(const QStringList& files);
  void Fill(const std::filesystem::path& path, Row& row);

  QStandardItemModel model_;
  std::map<std::filesystem::path, Row> rows_;
  std::unique_ptr<QFileSystemWatcher> watcher_;
  std::unique_ptr<platform::Alarm> renewal_;
  bool due_ = false;  ///< a renewal
};

}  // namespace bexlow::shell
