// The data files of the folder "Data Files" as a table, which follows the folder while it is on show.
#pragma once

#include <QTreeWidget>

#include <functional>
#include <string>

namespace bexlow::shell {

/// @param page  the table's parent, which it is hidden and shown with
/// @param open  called with the path of a row that the user opens
QTreeWidget* MakeRunsTable(QWidget* page, std::function<void(const std::string& path)> open);

}  // namespace bexlow::shell
