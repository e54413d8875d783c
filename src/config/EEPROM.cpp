#include <QKeyEvent>
#include <QRegularExpressionValidator>

#include "link/Communications.h"
#include "platform/controls/CWNumEdit.h"
#include "platform/controls/Timer.h"
#include "shared/ErrorHandler.h"
#include "shared/Screens.h"
#include "values/Conversions.h"
#include "values/NumberText.h"

namespace bexlow::config {

using namespace platform;

namespace {

/// A text box that takes digits, and a minus sign only while it is empty; other keys are ignored.
class ValueBox : public QLineEdit {
 public:
  using QLineEdit::QLineEdit;

 protected:
  // A key that does not pass changes nothing in the box; selected text stays selected.
  void keyPressEvent(QKeyEvent* event) override {
    const QString typed = event->text();
    const bool isCommand =
        (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
    const QChar key = isCommand || typed.isEmpty() ? QChar() : typed.front();
    const bool passes = (key >= u'0' && key <= u'9') || (key == u'-' && text().isEmpty());
    if (key.isPrint() && !passes) return event->accept();
    QLineEdit::keyPressEvent(event);
  }
};

constexpr int ReplyBudgetMs = 100;  // a reply that comes later is not seen
constexpr double LastAddress = 263;
constexpr double FirstAddress = 2;

/// The byte that a text stands for. A lone minus sign is an error, not 0.
std::uint8_t ByteOf(const QString& text) {
  const auto number = values::WholeNumber(text.toStdString());
  if (!number) Throw(std::errc::invalid_argument, "Value is no number");
  return values::ToByte(*number);
}

class EEPROM : public Form {
 public:
  EEPROM() : Form("EEPROM", "EEPROM") {
    Build();
    TimerEEPROM.OnTimer = [this] { TimerEEPROM_Timer(); };
    OnCloseRequest = [this] { cmdOK_Click(); };
    OnListening = [this] { return platform::Activity{done_, ""}; };
  }

 private:
  void Build() {
    txtValue->setObjectName("txtValue");
    txtValue->setAccessibleName("Value");
    txtValue->setAlignment(Qt::AlignRight);
    // What is pasted, dropped or composed by an input method comes without keys.
    txtValue->setValidator(new QRegularExpressionValidator(QRegularExpression("[0-9-]*"), txtValue));
    NumEditAddress->setObjectName("NumEditAddress");
    NumEditAddress->setAccessibleName("Address");
    NumEditAddress->SetLimits(0, LastAddress);
    NumEditAddress->setSingleStep(2);
    NumEditAddress->Value(FirstAddress);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addWidget(cmdRead);
    buttons->addWidget(cmdWrite);
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(20, 20, 20, 20);
    grid->setHorizontalSpacing(16);
    grid->setVerticalSpacing(12);
    grid->addWidget(MakeLabel("", "Address", this, NumEditAddress), 0, 0);
    grid->addWidget(NumEditAddress, 0, 1);
    grid->addWidget(MakeLabel("", "Value", this, txtValue), 1, 0);
    grid->addWidget(txtValue, 1, 1);
    grid->addLayout(buttons, 2, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    setMinimumWidth(360);
    FirstFocus(NumEditAddress);
  }

  // Runs a procedure of the screen; after a reported failure the screen is usable again.
  void Operate(const char* procedure, const std::function<void()>& body) {
    bool done = false;
    shared::Guarded(*this, procedure, [&] {
      body();
      done = true;
    });
    if (!done) EndOperation();
  }

  void EndOperation() {
    TimerEEPROM.Enabled(false);
    link::CloseCommPort(MSComm1, *this);
    EnableControls(true);
    MousePointer(Pointer::Normal);
  }

  void EnableControls(bool enabled) {
    for (QWidget* control : std::initializer_list<QWidget*>{cmdRead, cmdWrite, cmdOK, NumEditAddress})
      control->setEnabled(enabled);
  }

  int Address() const { return values::ToInt16(NumEditAddress->Value()); }

  void cmdRead_Click() {
    if (!link::LoggerIsFree(*this)) return;
    Operate("cmdRead_Click", [this] {
      MousePointer(Pointer::Busy);
      link::OpenCommPort(MSComm1, *this);
      link::Send(MSComm1, link::ReadEeprom(Address()));
      txtValue->clear();
      EnableControls(false);
      TimerEEPROM.Enabled(true);
    });
  }

  void TimerEEPROM_Timer() {
    Operate("TimerEEPROM_Timer", [this] {
      const auto reply = MSComm1.Input();
      if (reply.size() == 1) {
        txtValue->setText(QString::number(reply.front()));
        done_ = "Cell " + std::to_string(Address()) + " holds " + std::to_string(reply.front());
      } else {
        shared::TellFailure("Read EEPROM error: packet length is <> 1 byte!");
      }
      EndOperation();
    });
  }

  void cmdWrite_Click() {
    if (!link::LoggerIsFree(*this)) return;
    Operate("cmdWrite_Click", [this] {
      if (txtValue->text().isEmpty()) return MsgBox("No value has been entered!");
      MousePointer(Pointer::Busy);
      EnableControls(false);
      link::OpenCommPort(MSComm1, *this);
      const int value = ByteOf(txtValue->text());
      link::Send(MSComm1, link::WriteEeprom(Address(), value));
      done_ = std::to_string(value) + " was sent to cell " + std::to_string(Address()) + ", Read checks it";
      EndOperation();
    });
  }

  void cmdOK_Click() {
    Operate("cmdOK_Click", [this] {
      link::CloseCommPort(MSComm1, *this);
      Unload();
    });
  }

  std::string done_;  ///< what was read or written last
  MSComm MSComm1{*this, "MSComm1"};
  Timer TimerEEPROM{*this, "TimerEEPROM", ReplyBudgetMs};
  CWNumEdit* NumEditAddress = new CWNumEdit(this);
  ValueBox* txtValue = new ValueBox(this);
  QPushButton* cmdRead = MakeButton("cmdRead", "Read", [this] { cmdRead_Click(); });
  QPushButton* cmdWrite = MakeButton("cmdWrite", "Write", [this] { cmdWrite_Click(); });
  QPushButton* cmdOK = MakeButton("cmdOK", "OK", [this] { cmdOK_Click(); });
};

}  // namespace

Form* MakeEEPROM() { return new EEPROM; }

}  // namespace bexlow::config
