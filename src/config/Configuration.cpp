#include <QButtonGroup>
#include <QScrollArea>

#include "config/WriteSequence.h"
#include "platform/controls/CWNumEdit.h"
#include "shared/NumberBox.h"
#include "shared/Screens.h"

namespace bexlow::config {

using namespace platform;
using shared::Guarded;
using shared::Shared;

namespace {

constexpr auto RowsCaption = "EEPROM Address - Value - Parameter";

// Four of the ticks write no cell.
constexpr WritePlan ConfigurationWrite{
    EndOfWrite, FirstIndex, true, "Progress", [](int k) {
      const Cell& cell = WriteCells[IndexOf(k)];
      return cell.row->form == Storage::None ? std::nullopt : std::optional(cell.Address());
    }};

QString Text(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// "2/3", or "30" for a row of one cell.
QString AddressText(const Parameter& row) {
  const auto first = QString::number(row.address);
  return CellsOf(row.form) == 1 ? first : first + QString("/%1").arg(row.address + 1);
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
  grid->addWidget(MakeLabel("", AddressText(row), parent), line, 0);
  grid->addWidget(value, line, 1);
  grid->addWidget(MakeLabel("", Text(row.caption), parent, value), line, 2);
  if (!row.unit.empty()) grid->addWidget(MakeLabel("", Text(row.unit), parent), line, 3);
}

class Configuration : public Form {
 public:
  Configuration() : Form("Configuration", "Configuration") {
    BuildMenus();
    BuildBody();
    MSComm1.OnComm = [this] { MSComm1_OnComm(); };
    AddChord(shared::ServiceChord, [this] { ToggleHidden(); });
    OnActivity = [this] { return Activity(); };
    StartWith([this] {
      if (!link::LoggerIsFree(*this)) return Unload();  // boxes that were never filled must not be written
      mnuRead_Click();
    });
  }

 private:
  void BuildMenus() {
    mnuFile->addSeparator()->setObjectName("mnuSep");
    AddEntry(mnuFile, "mnuReturn", "&Return", [this] { Unload(); });
    mnuEEPROM->setVisible(false);
    AddEntry(mnuTools, "mnuShowMin", "&Show Min", [this] { mnuShow_Click(&Parameter::min); });
    AddEntry(mnuTools, "mnuShowMax", "Show &Max", [this] { mnuShow_Click(&Parameter::max); });
    AddEntry(mnuTools, "mnuShowDefaults", "Show &Defaults", [this] { mnuShowDefaults_Click(); });
  }

  void BuildBody() {
    auto* columns = new QHBoxLayout(page_);
    columns->setContentsMargins(0, 0, 0, 0);
    columns->setSpacing(16);
    columns->addWidget(BuildAddresses("fraAddresses", 2), 1, Qt::AlignTop);
    auto* right = new QVBoxLayout;
    right->addWidget(BuildAddresses("fraSingleAddresses", 1));
    BuildIdentity();
    right->addWidget(fra100108);
    right->addStretch();
    columns->addLayout(right, 1);

    auto* scroll = new QScrollArea(this);  // for windows and fonts that leave too little height
    scroll->setWidget(page_);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(16, 12, 16, 12);
    column->addWidget(scroll, 1);
    column->addWidget(progress_.frame);
  }

  QWidget* MakeValueBox(const Parameter& row, QWidget* parent) {
    auto* edit = new CWNumEdit(parent);
    edit->setObjectName(Text(row.name));
    edit->setAccessibleName(Text(row.caption));
    edit->setAccessibleDescription(RangeOf(row));
    edit->setToolTip(RangeOf(row));
    edit->SetLimits(row.min, row.max);
    edit->SetDecimals(DecimalsOf(row.form));
    edit->setMinimumWidth(edit->fontMetrics().horizontalAdvance("-180.000") + 48);
    edit->setVisible(row.shown);
    edits_.emplace(&row, edit);
    return edit;
  }

  // The rows of parameters that have this many cells.
  QWidget* BuildAddresses(const char* name, int cells) {
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

  void AddUpdateRate(QGridLayout* grid, const Parameter& row, QWidget* frame) {
    auto* group = new QButtonGroup(frame);
    int line = grid->rowCount();
    grid->addWidget(MakeLabel("", AddressText(row), frame), line, 0);
    opt75Hz->setText("7.5 Hz Linear Update Rate");
    opt75Hz->setObjectName("opt75Hz");
    opt15Hz->setText(Text(row.caption));
    opt15Hz->setObjectName(Text(row.name));
    for (auto* option : {opt75Hz, opt15Hz}) {
      group->addButton(option);
      grid->addWidget(option, line++, 1, 1, 3);
    }
    opt15Hz->setChecked(true);
  }

  void BuildIdentity() {
    auto* grid = MakeGrid(fra100108);
    for (const int address : IdentityAddresses) {
      const Parameter& row = *std::ranges::find(Parameters, address, &Parameter::address);
      auto* box = MakeReadOnlyBox(Text(row.name).toUtf8().constData(), Text(row.caption), fra100108);
      box->setAlignment(Qt::AlignRight);
      boxes_.emplace(&row, box);
      AddRow(grid, row, box, fra100108);
    }
    fra100108->hide();
  }

  // A sequence uses the port and the progress bar, which the other menu entries need too.
  void EnableSequences(bool enabled) {
    mnuRead->setEnabled(enabled);
    mnuWrite->setEnabled(enabled);
    mnuTools->setEnabled(enabled);
  }

  void mnuRead_Click() {
    if (!link::LoggerIsFree(*this)) return;
    Guarded(*this, "mnuRead_Click", [this] {
      MousePointer(Pointer::Busy);
      EnableSequences(false);
      page_->setEnabled(false);  // its zeros are no settings of the logger
      ClearParameters();
      Shared.ParameterIndex = FirstIndex;
      progress_.bar->setMaximum(EndOfRead - FirstIndex);
      Shared.ReadArray = {};
      wrongReplies_ = 0;
      MSComm1.RThreshold(1);
      link::OpenCommPort(MSComm1, *this);
      RequestCell();
    });
  }

  void RequestCell(std::size_t stepsSent = 0) {
    const auto request = link::ReadEeprom(ReadCells.at(IndexOf(Shared.ParameterIndex)).Address());
    link::Send(MSComm1, std::span(request).subspan(stepsSent));
  }

  platform::Activity Activity() const {
    if (write_.Running()) return write_.Activity();
    if (const auto halted = link::Halted(MSComm1, "Reading")) return *halted;
    const auto cells =
        CellsText(Shared.ParameterIndex, Shared.ParameterIndex - FirstIndex, EndOfRead - FirstIndex);
    if (wrongReplies_ >= link::ToldWrongReplies)
      return {"Wrong replies from the logger", "asking again " + cells, ", ", true};
    return {"Reading", cells};
  }

  // One request is in flight. Any reply but one byte is dropped and the same cell asked for again, without
  // limit. A repeat and the next request start with the same letter, so it is sent first; the 12 ms pause
  // after it shows whether more bytes follow.
  void MSComm1_OnComm() {
    const bool last = Shared.ParameterIndex == EndOfRead - 1;
    const auto firstSteps = last ? link::Request{} : link::Request{link::ReadEeprom(0).front()};
    link::Bytes reply = MSComm1.Input();
    link::EndReply(MSComm1, reply, 1, firstSteps, last ? link::LineSilenceUs : 0);
    wrongReplies_ = reply.size() == 1 ? 0 : wrongReplies_ + 1;
    if (reply.size() == 1) TakeCell(reply.front());
    if (Shared.ParameterIndex == EndOfRead) return FinishRead();
    RequestCell(firstSteps.size());
  }

  void TakeCell(std::uint8_t byte) {
    Shared.ReadArray.at(IndexOf(Shared.ParameterIndex)) = byte;
    const int k = ++Shared.ParameterIndex;
    progress_.Show(QString("Reading %1").arg(k), k - FirstIndex);
    emit ActivityChanged();
  }

  void FinishRead() {
    EnableSequences(true);
    page_->setEnabled(true);
    link::CloseCommPort(MSComm1, *this);
    BreakOutReadArray();
    ShowParameters();
    progress_.Show("Progress", 0);
    MousePointer(Pointer::Normal);
    MsgBox("Read completed!");
    if (Active() == this) Activated();  // the keyboard goes back to the boxes
  }

  void BreakOutReadArray() {
    Guarded(*this, "BreakOutReadArray", [this] {
      for (const Parameter& row : Parameters) {
        if (row.field != nullptr) Shared.OnBoardParameters.*row.field = ValueOf(row, Shared.ReadArray);
      }
      for (const auto& [row, box] : boxes_) box->setText(shared::Shown(ValueOf(*row, Shared.ReadArray)));
    });
  }

  void ShowParameters() {
    const auto& parameters = Shared.OnBoardParameters;
    for (const auto& [row, edit] : edits_) {
      if (row->field != nullptr) edit->Value(parameters.*row->field);
    }
    (parameters.LinearUpdateRate == UpdateRate75 ? opt75Hz : opt15Hz)->setChecked(true);
  }

  void ClearParameters() {
    for (const auto& [row, edit] : edits_) edit->Value(0);
    auto* rates = opt15Hz->group();
    rates->setExclusive(false);  // an exclusive group always keeps one of them
    opt75Hz->setChecked(false);
    opt15Hz->setChecked(false);
    rates->setExclusive(true);
  }

  std::uint8_t ByteAt(int k) const {
    const auto& [row, byte] = WriteCells[IndexOf(k)];
    const double rate = opt75Hz->isChecked() ? UpdateRate75 : UpdateRate15;
    const double value = row->control == Control::Option ? rate : edits_.at(row)->Value();
    return Encode(row->form, value)[static_cast<std::size_t>(byte)];
  }

  void mnuShow_Click(double Parameter::*value) {
    for (const auto& [row, edit] : edits_) edit->Value(row->*value);
  }

  void mnuShowDefaults_Click() {
    mnuShow_Click(&Parameter::initial);
    opt15Hz->setChecked(true);
  }

  void ToggleHidden() {
    const bool show = !mnuEEPROM->isVisible();
    mnuEEPROM->setVisible(show);
    fra100108->setVisible(show);
  }

  MSComm MSComm1{*this, "MSComm1"};
  Progress progress_ = MakeProgress("fraProgress", "PBar", "Progress", EndOfRead - FirstIndex, this);
  WriteSequence write_{*this, ConfigurationWrite, progress_, [this](int k) { return ByteAt(k); },
                       [this](bool enabled) { EnableSequences(enabled); }};
  std::map<const Parameter*, CWNumEdit*> edits_;
  std::map<const Parameter*, QLineEdit*> boxes_;

  int wrongReplies_ = 0;  ///< in a row

  QMenu* mnuFile = AddMenu("mnuFile", "&File");
  QAction* mnuRead = AddEntry(mnuFile, "mnuRead", "&Read", [this] { mnuRead_Click(); });
  QAction* mnuWrite = AddEntry(mnuFile, "mnuWrite", "&Write", [this] { write_.mnuWrite_Click(); });
  QMenu* mnuTools = AddMenu("mnuTools", "&Tools");
  QAction* mnuEEPROM =
      AddEntry(mnuTools, "mnuEEPROM", "&EEPROM", [this] { MakeEEPROM()->ShowModal(window()); });
  QWidget* page_ = new QWidget;  ///< holds the values
  QWidget* fra100108 = MakeFrame("fra100108", RowsCaption, this);
  QRadioButton* opt75Hz = new QRadioButton;
  QRadioButton* opt15Hz = new QRadioButton;
};

}  // namespace

Form* MakeConfiguration() { return new Configuration; }

}  // namespace bexlow::config
