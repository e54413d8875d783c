#include <QButtonGroup>
#include <QScrollArea>

#include "config/ParameterMap.h"
#include "config/WriteSequence.h"
#include "link/Communications.h"
#include "platform/controls/CWNumEdit.h"
#include "shared/ErrorHandler.h"
#include "shared/NumberBox.h"
#include "shared/Records.h"
#include "shared/Screens.h"

namespace bexlow::config {

using namespace platform;
using shared::Guarded;
using shared::Shared;
using shared::Shown;

namespace {

constexpr auto RowsCaption = "EEPROM Address - Value - Parameter";

std::size_t IndexOf(int k) { return static_cast<std::size_t>(k - FirstIndex); }

/// How many cells the ticks before k have written: four of the ticks write none.
int CellsWritten(int k) {
  const auto before = std::span(WriteCells).first(IndexOf(k));
  return static_cast<int>(
      std::ranges::count_if(before, [](Cell cell) { return Parameters[cell.row].form != Storage::None; }));
}

constexpr WritePlan ConfigurationWrite{EndOfWrite,  EndOfWrite - FirstIndex, FirstIndex, true, "Progress",
                                       CellsWritten};

QString Text(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QByteArray NameOf(const Parameter& row) { return Text(row.name).toUtf8(); }

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

class Configuration : public Form {
 public:
  Configuration()
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
    OnActivity = [this] { return Activity(); };
    StartWith([this] {
      if (!link::LoggerIsFree(*this)) return Unload();  // boxes that were never filled must not be written
      mnuRead_Click();
    });
  }

 private:
  void BuildMenus() {
    auto* file = AddMenu("mnuFile", "&File");
    mnuRead = AddEntry(file, "mnuRead", "&Read", [this] { mnuRead_Click(); });
    mnuWrite = AddEntry(file, "mnuWrite", "&Write", [this] { write_.mnuWrite_Click(); });
    file->addSeparator()->setObjectName("mnuSep");
    AddEntry(file, "mnuReturn", "&Return", [this] { Unload(); });

    mnuTools = AddMenu("mnuTools", "&Tools");
    mnuEEPROM = AddEntry(mnuTools, "mnuEEPROM", "&EEPROM", [this] { MakeEEPROM()->ShowModal(window()); });
    mnuEEPROM->setVisible(false);
    AddEntry(mnuTools, "mnuShowMin", "&Show Min", [this] { mnuShow_Click(&Parameter::min); });
    AddEntry(mnuTools, "mnuShowMax", "Show &Max", [this] { mnuShow_Click(&Parameter::max); });
    AddEntry(mnuTools, "mnuShowDefaults", "Show &Defaults", [this] { mnuShowDefaults_Click(); });
  }

  void BuildBody() {
    page_ = new QWidget;
    auto* columns = new QHBoxLayout(page_);
    columns->setContentsMargins(0, 0, 0, 0);
    columns->setSpacing(16);
    columns->addWidget(BuildAddresses("fraAddresses", 2), 1, Qt::AlignTop);
    auto* right = new QVBoxLayout;
    right->addWidget(BuildAddresses("fraSingleAddresses", 1));
    right->addWidget(fra100108 = BuildIdentity());
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
    column->addWidget(progress_.fraProgress);
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
    edits_[static_cast<std::size_t>(&row - Parameters)] = edit;
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

  QWidget* BuildIdentity() {
    auto* frame = MakeFrame("fra100108", RowsCaption, this);
    auto* grid = MakeGrid(frame);
    for (const int address : IdentityAddresses) {
      const auto& row = *std::ranges::find(Parameters, address, &Parameter::address);
      auto* box = MakeReadOnlyBox(NameOf(row).constData(), Text(row.caption), frame);
      box->setAlignment(Qt::AlignRight);
      boxes_[static_cast<std::size_t>(&row - Parameters)] = box;
      AddRow(grid, row, box, frame);
    }
    frame->hide();
    return frame;
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
      progress_.PBar->setMaximum(EndOfRead - FirstIndex);
      Shared.ReadArray = {};
      MSComm1.RThreshold(1);
      link::OpenCommPort(MSComm1, *this);
      RequestCell();
    });
  }

  void RequestCell(std::size_t stepsSent = 0) {
    const auto request = link::ReadEeprom(AddressOf(ReadCells.at(IndexOf(Shared.ParameterIndex))));
    link::Send(MSComm1, std::span(request).subspan(stepsSent));
  }

  platform::Activity Activity() const {
    if (write_.Running()) return write_.Activity();
    if (const auto halted = link::Halted(MSComm1, "Reading")) return *halted;
    return {"Reading",
            CellsText(Shared.ParameterIndex, Shared.ParameterIndex - FirstIndex, EndOfRead - FirstIndex)};
  }

  // One request is in flight. Any reply but one byte is dropped and the same cell asked for again, without
  // limit. A repeat and the next request start with the same letter, so it is sent first; the 12 ms pause
  // after it shows whether more bytes follow.
  void MSComm1_OnComm() {
    const bool last = Shared.ParameterIndex == EndOfRead - 1;
    const auto begun = last ? link::Request{} : link::Request{link::ReadEeprom(0).front()};
    link::Bytes reply = MSComm1.Input();
    link::EndReply(MSComm1, reply, 1, begun, last ? link::LineSilenceUs : 0);
    if (reply.size() == 1) TakeCell(reply.front());
    if (Shared.ParameterIndex == EndOfRead) return FinishRead();
    RequestCell(begun.size());
  }

  void TakeCell(std::uint8_t byte) {
    Shared.ReadArray.at(IndexOf(Shared.ParameterIndex)) = byte;
    const int k = ++Shared.ParameterIndex;
    progress_.Show("Reading", k, k - FirstIndex);
    emit ActivityChanged();
  }

  void FinishRead() {
    EnableSequences(true);
    page_->setEnabled(true);
    link::CloseCommPort(MSComm1, *this);
    BreakOutReadArray();
    ShowParameters();
    progress_.End("Progress");
    MousePointer(Pointer::Normal);
    MsgBox("Read completed!");
    if (Active() == this) Activated();  // the keyboard goes back to the boxes
  }

  void BreakOutReadArray() {
    Guarded(*this, "BreakOutReadArray", [this] {
      BreakOut(Shared.ReadArray, Shared.OnBoardParameters);
      for (std::size_t row = 0; row < ParameterCount; ++row)
        if (boxes_[row] != nullptr) boxes_[row]->setText(Shown(ValueIn(Shared.ReadArray, Parameters[row])));
    });
  }

  void ShowParameters() {
    const auto& parameters = Shared.OnBoardParameters;
    for (std::size_t row = 0; row < ParameterCount; ++row) {
      const auto field = Parameters[row].field;
      if (edits_[row] != nullptr && field != nullptr) edits_[row]->Value(parameters.*field);
    }
    (parameters.LinearUpdateRate == UpdateRate75 ? opt75Hz : opt15Hz)->setChecked(true);
  }

  void ClearParameters() {
    for (auto* edit : edits_) {
      if (edit != nullptr) edit->Value(0);
    }
    auto* rates = opt15Hz->group();
    rates->setExclusive(false);  // an exclusive group always keeps one of them
    opt75Hz->setChecked(false);
    opt15Hz->setChecked(false);
    rates->setExclusive(true);
  }

  double ValueOf(std::size_t row) const {
    if (edits_[row] != nullptr) return edits_[row]->Value();
    return opt75Hz->isChecked() ? UpdateRate75 : UpdateRate15;
  }

  std::optional<CellByte> CellAt(int k) const {
    const auto cell = WriteCells.at(IndexOf(k));
    const auto form = Parameters[cell.row].form;
    if (form == Storage::None) return std::nullopt;
    return CellByte{AddressOf(cell), Encode(form, ValueOf(cell.row))[cell.byte]};
  }

  void mnuShow_Click(double Parameter::*value) {
    for (std::size_t row = 0; row < ParameterCount; ++row) {
      if (edits_[row] != nullptr) edits_[row]->Value(Parameters[row].*value);
    }
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

  MSComm MSComm1;
  Progress progress_;
  WriteSequence write_;
  std::array<CWNumEdit*, ParameterCount> edits_{};  ///< indexed as Parameters, null for other rows
  std::array<QLineEdit*, ParameterCount> boxes_{};

  QWidget* page_ = nullptr;  ///< holds the values
  QMenu* mnuTools = nullptr;
  QAction* mnuRead = nullptr;
  QAction* mnuWrite = nullptr;
  QAction* mnuEEPROM = nullptr;
  QWidget* fra100108 = nullptr;
  QRadioButton* opt75Hz = nullptr;
  QRadioButton* opt15Hz = nullptr;
};

}  // namespace

Form* MakeConfiguration() { return new Configuration; }

}  // namespace bexlow::config
