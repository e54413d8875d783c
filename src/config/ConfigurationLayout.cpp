// How the Configuration screen is built from the parameter map; what it does is in Configuration.cpp.
#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include "config/Configuration.h"
#include "config/EEPROM.h"
#include "link/Communications.h"
#include "platform/controls/CWNumEdit.h"
#include "platform/controls/Controls.h"
#include "shared/Chords.h"
#include "values/NumberText.h"

namespace bexlow::config {

using namespace platform;

namespace {

constexpr auto RowsCaption = "EEPROM Address - Value - Parameter";
constexpr WritePlan ConfigurationWrite{EndOfWrite, EndOfWrite - FirstIndex, FirstIndex, true, "Progress"};

QString Text(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QByteArray NameOf(const Parameter& row) {
  return Text(row.name).toUtf8();
}

QString RangeOf(const Parameter& row) {
  const auto limits = values::PlainNumberText(row.min) + " to " + values::PlainNumberText(row.max);
  return QString::fromStdString(limits) + (row.unit.empty() ? "" : " ") + Text(row.unit);
}

QGridLayout* MakeGrid(QWidget* frame) {
  auto* grid = new QGridLayout(frame);
  grid->setHorizontalSpacing(12);
  grid->setVerticalSpacing(4);
  grid->setContentsMargins(10, 6, 10, 8);
  grid->setColumnStretch(3, 1);
  return grid;
}

/// Address, value, caption, unit.
void AddRow(QGridLayout* grid, const Parameter& row, QWidget* value, QWidget* parent) {
  const int line = grid->rowCount();
  grid->addWidget(MakeLabel("", QString::fromStdString(AddressText(row)), parent), line, 0);
  grid->addWidget(value, line, 1);
  grid->addWidget(MakeLabel("", Text(row.caption), parent, value), line, 2);
  if (!row.unit.empty()) grid->addWidget(MakeLabel("", Text(row.unit), parent), line, 3);
}

}  // namespace

Configuration::Configuration()
    : Form("Configuration", "Configuration"),
      MSComm1(*this, "MSComm1"),
      progress_(Progress::Make("Progress", EndOfRead - FirstIndex, this)),
      write_(
          *this, ConfigurationWrite, progress_, [this](int k) { return CellAt(k); },
          [this](bool enabled) { EnableSequences(enabled); }) {
  BuildMenus();
  BuildBody();
  MSComm1.OnComm = [this] { MSComm1_OnComm(); };
  AddChord(shared::ServiceChord, [this] { ToggleHidden(); });
  OnCloseRequest = [this] { Unload(); };
  OnActivity = [this] { return Activity(); };
  StartWith([this] {
    if (!link::LoggerIsFree(*this)) return Unload();  // boxes that were never filled must not be written
    mnuRead_Click();
  });
}

void Configuration::BuildMenus() {
  auto* file = AddMenu("mnuFile", "&File");
  mnuRead = AddEntry(file, "mnuRead", "&Read", [this] { mnuRead_Click(); });
  mnuWrite = AddEntry(file, "mnuWrite", "&Write", [this] { write_.mnuWrite_Click(); });
  AddSeparator(file, "mnuSep");
  AddEntry(file, "mnuReturn", "&Return", [this] { Unload(); });

  mnuTools = AddMenu("mnuTools", "&Tools");
  mnuEEPROM = AddEntry(mnuTools, "mnuEEPROM", "&EEPROM", [this] { (new EEPROM)->ShowModal(window()); });
  mnuEEPROM->setVisible(false);
  AddEntry(mnuTools, "mnuShowMin", "&Show Min", [this] { mnuShow_Click(&Parameter::min); });
  AddEntry(mnuTools, "mnuShowMax", "Show &Max", [this] { mnuShow_Click(&Parameter::max); });
  AddEntry(mnuTools, "mnuShowDefaults", "Show &Defaults", [this] { mnuShowDefaults_Click(); });
}

void Configuration::BuildBody() {
  auto* page = new QWidget;
  auto* columns = new QHBoxLayout(page);
  columns->setContentsMargins(0, 0, 0, 0);
  columns->setSpacing(16);
  columns->addWidget(BuildAddresses("fraAddresses", 2), 1, Qt::AlignTop);
  auto* right = new QVBoxLayout;
  right->addWidget(BuildAddresses("fraSingleAddresses", 1));
  right->addWidget(fra100108 = BuildIdentity());
  right->addStretch();
  columns->addLayout(right, 1);

  auto* scroll = new QScrollArea(this);  // for windows and fonts that leave too little height
  scroll->setWidget(page);
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setFocusPolicy(Qt::NoFocus);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(16, 12, 16, 12);
  column->addWidget(scroll, 1);
  column->addWidget(progress_.fraProgress);
}

QWidget* Configuration::MakeValueBox(const Parameter& row, QWidget* parent) {
  auto* edit = new CWNumEdit(parent);
  edit->setObjectName(Text(row.name));
  edit->setAccessibleName(Text(row.caption));
  edit->setAccessibleDescription(RangeOf(row));
  edit->setToolTip(RangeOf(row));
  edit->SetLimits(row.min, row.max);
  edit->SetDecimals(DecimalsOf(row.form));
  edit->setMinimumWidth(edit->fontMetrics().horizontalAdvance("-180.000") + 48);
  edit->setVisible(row.shown);
  edits_[static_cast<std::size_t>(&row - Parameters)] = edit;
  return edit;
}

QWidget* Configuration::BuildAddresses(const char* name, int cells) {
  auto* frame = MakeFrame(name, RowsCaption, this);
  auto* grid = MakeGrid(frame);
  for (const Parameter& row : Parameters) {
    if (CellsOf(row.form) != cells) continue;
    if (row.control == Control::Option) AddUpdateRate(grid, row, frame);
    if (row.control != Control::NumEdit) continue;
    auto* box = MakeValueBox(row, frame);
    if (row.shown) AddRow(grid, row, box, frame);
  }
  return frame;
}

void Configuration::AddUpdateRate(QGridLayout* grid, const Parameter& row, QWidget* frame) {
  auto* group = new QButtonGroup(frame);
  int line = grid->rowCount();
  grid->addWidget(MakeLabel("", QString::fromStdString(AddressText(row)), frame), line, 0);
  const auto make = [&](const char* name, std::string_view caption) {
    auto* option = new QRadioButton(Text(caption), frame);
    option->setObjectName(name);
    group->addButton(option);
    grid->addWidget(option, line++, 1, 1, 3);
    return option;
  };
  opt75Hz = make("opt75Hz", UpdateRate75Caption);
  opt15Hz = make("opt15Hz", UpdateRate15Caption);
  opt15Hz->setChecked(true);
}

QWidget* Configuration::BuildIdentity() {
  auto* frame = MakeFrame("fra100108", RowsCaption, this);
  auto* grid = MakeGrid(frame);
  for (const auto& [row, text] : IdentityTexts({})) {
    auto* box = MakeReadOnlyBox(NameOf(*row).constData(), Text(row->caption), frame);
    boxes_[static_cast<std::size_t>(row - Parameters)] = box;
    AddRow(grid, *row, box, frame);
  }
  frame->hide();
  return frame;
}

}  // namespace bexlow::config
