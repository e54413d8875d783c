// The data files of the folder "Data Files" as a table, which follows the folder while it is on show.
#pragma once

#include <QTreeWidget>

#include "platform/machine/Machine.h"

class QFileSystemWatcher;

namespace bexlow::shell {

class RunsTable : public QTreeWidget {
 public:
  /// @param open  called with the path of a row that the user opens
  RunsTable(QWidget* page, std::function<void(const std::string& path)> open);
  ~RunsTable() override;

 protected:
  void keyboardSearch(const QString& typed) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Row;

  void Renew();
  void RenewSoon();
  void FitColumns();

  std::map<std::filesystem::path, std::unique_ptr<Row>> rows_;
  std::unique_ptr<QFileSystemWatcher> watcher_;
  std::unique_ptr<platform::Alarm> renewal_;
  bool due_ = false;  ///< a renewal
};

}  // namespace bexlow::shell
