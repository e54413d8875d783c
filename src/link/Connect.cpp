
#include "link/Communications.h"
#include "platform/controls/CWNumEdit.h"
#include "platform/machine/Ports.h"
#include "platform/machine/System.h"
#include "shared/ErrorHandler.h"
#include "shared/General.h"
#include "shared/Records.h"
#include "shared/Screens.h"
#include "values/Conversions.h"
#include "values/NumberText.h"

namespace bexlow::link {

using namespace platform;
using shared::Shared;

namespace {

constexpr auto Silent = "opened, but nobody answered";
constexpr auto Gone = "opened, then failed";
constexpr std::chrono::milliseconds LookEvery{500};  // for an adapter that is plugged in late

class Connect : public Form {
 public:
  explicit Connect(std::function<void(bool)> reached)
      : Form("Connect", "Connect"), reached_(std::move(reached)) {
    Build();
    NumEditCommPort->Value(Shared.CurrentCommPort);
    ShowDevice();
    FirstFocus(NumEditCommPort);
    look_ = Machine::Get().MakeAlarm([this] {
      EventGate::Get().Offer(this, {this, "Connect_Timer"}, [this] { ShowDevice(); });
    });
    look_->Start(LookEvery);
  }

 private:
  void Build() {
    auto* label = MakeLabel("Label1", "Select Comm Port", this, NumEditCommPort);
    NumEditCommPort->setObjectName("NumEditCommPort");
    NumEditCommPort->setAccessibleName("Select Comm Port");
    NumEditCommPort->SetLimits(0, LastComm);
    lblDevice->setWordWrap(true);
    lblDevice->setMinimumHeight(2 * fontMetrics().lineSpacing());
    connect(NumEditCommPort, &QDoubleSpinBox::valueChanged, this, [this] { ShowDevice(); });
    DefaultButton(cmdOK);
    cmdOK->setDefault(true);  // drawn as what Enter presses

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdAutoDetect);
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(20, 20, 20, 20);
    grid->setVerticalSpacing(12);
    grid->addWidget(label, 0, 0);
    grid->addWidget(NumEditCommPort, 0, 1);
    grid->addWidget(lblDevice, 1, 0, 1, 2, Qt::AlignTop);
    grid->addLayout(buttons, 2, 0, 1, 2);
    setMinimumWidth(420);
  }

  std::string DeviceWords(int port) {
    if (port == 0) return "0 stands for no port.";
    const auto info = Machine::Get().DescribePort(port);
    if (info.device.empty()) return "No device stands behind this number.";
    return "Device " + info.device + (info.description.empty() ? "" : ": " + info.description);
  }

  /// The device behind the number in the box, as it is now, and what the ports did that were asked last.
  void ShowDevice() {
    const auto device = QString::fromStdString(DeviceWords(values::ToInt16(NumEditCommPort->Value())));
    const auto text = outcomes_.empty() ? device : device + "\n\n" + outcomes_.join("\n");
    if (text == lblDevice->text()) return;
    lblDevice->setText(text);
    adjustSize();
  }

  void Note(std::int16_t port, const std::string& outcome) {
    const auto device = Machine::Get().DescribePort(port).device;
    outcomes_ << QString::fromStdString("Comm " + values::NumberText(port) + " (" + device + "): " + outcome);
  }

  void EnableButtons(bool enabled) {
    cmdOK->setEnabled(enabled);
    cmdAutoDetect->setEnabled(enabled);
  }

  bool CommPortExists(std::int16_t port) {
    try {
      MSComm1.CommPort = port;
      MSComm1.PortOpen(true);
      MSComm1.PortOpen(false);
      return true;
    } catch (const std::system_error& error) {
      const auto why = WhyNoOpening(error.code().value());
      if (why != NoSuchDevice) Note(port, why);
      return false;
    }
  }

  bool LoggerAnswers(std::int16_t port, const std::string& baud) {
    DetectedCommPort = 0;
    try {
      MSComm1.CommPort = port;
      MSComm1.Settings = baud + ",n,8,1";
      MSComm1.PortOpen(true);
      Send(MSComm1, Ping());
      shared::WaitMilliseconds(PingWaitMs);
      const Bytes reply = MSComm1.Input();
      MSComm1.PortOpen(false);
      if (reply == Bytes{Ping().front().byte}) DetectedCommPort = port;
      Note(port, DetectedCommPort != 0 ? "the logger answered"
                 : !reply.empty()      ? "opened, but the reply is not a logger's"
                 : Machine::Get().DescribePort(port).description == NoSuchDevice ? Gone
                                                                                 : Silent);
    } catch (const std::system_error&) {
      MSComm1.PortOpen(false);
      Note(port, Gone);
    }
    return DetectedCommPort != 0;
  }

  void cmdAutoDetect_Click() {
    if (!LoggerIsFree(*this)) return;
    MousePointer(Pointer::Busy);
    EnableButtons(false);
    outcomes_.clear();
    shared::ForgetFailure(*this);
    bool found = false;
    for (std::int16_t port = 1; port <= LastComm && !found; ++port) {
      lblDevice->setText(QString("Asking on Comm %1...").arg(port));
      Machine::Get().Repaint();
      found = CommPortExists(port) && LoggerAnswers(port, "19200");
    }
    if (outcomes_.empty()) outcomes_ << "Comm 1 to 16: no such device";
    EnableButtons(true);
    if (found) NumEditCommPort->Value(DetectedCommPort);
    ShowDevice();
    MousePointer(Pointer::Normal);
    if (!found)
      return shared::TellFailure("Bexlow not found on Comm 1-16!", outcomes_.join("; ").toStdString());
    MsgBox("Bexlow found on Comm " + values::NumberText(DetectedCommPort) + "!");
    cmdOK->setFocus();
  }

  void cmdOK_Click() {
    if (NumEditCommPort->Value() != 0 && !LoggerIsFree(*this)) return;
    MousePointer(Pointer::Busy);
    EnableButtons(false);
    Shared.CurrentCommPort = values::ToInt16(NumEditCommPort->Value());
    SaveSetting("Startup", "CurrentCommPort", values::NumberText(Shared.CurrentCommPort));
    MousePointer(Pointer::Normal);
    if (Shared.CurrentCommPort == 0) {
      MsgBox("No Comm port has been selected!");
      return Unload();
    }
    outcomes_.clear();
    Machine::Get().Repaint();
    const bool retrieved = RetrieveOnBoardParameters();
    ShowDevice();
    if (!retrieved)
      shared::TellFailure(
          "A communication failure has occurred!\r\n"
          "On-board parameters were not retrieved from the Bexlow.\r\n"
          "Check your hardware set-up and try again.",
          outcomes_.join("; ").toStdString());
    reached_(retrieved);
    Unload();
  }

  bool RetrieveOnBoardParameters() {
    const auto port = Shared.CurrentCommPort;
    if (!CommPortExists(port)) {
      if (outcomes_.empty()) Note(port, NoSuchDevice);
      return false;
    }
    try {
      const auto block = TareBlock();
      const auto reply = ReadBlock(MSCommTare, *this, block);
      const auto counts = values::NumberText(static_cast<double>(reply.size())) + " bytes came instead of " +
                          values::NumberText(static_cast<double>(block.reply));
      if (reply.size() != block.reply) Note(port, reply.empty() ? Silent : "opened, but " + counts);
      if (reply.size() != block.reply) return false;
      auto& parameters = Shared.OnBoardParameters;
      parameters.XTare = values::SampleWordToAngle(values::Word(reply, 0), 180);
      parameters.YTare = values::SampleWordToAngle(values::Word(reply, 2), 90);
      parameters.UpdateTimeIncrement = reply[4];
      return true;
    } catch (const std::system_error&) {
      MSCommTare.PortOpen(false);
      Note(port, Gone);
      return false;
    }
  }

  std::function<void(bool)> reached_;
  std::int16_t DetectedCommPort = 0;
  MSComm MSComm1{*this, "MSComm1"};
  MSComm MSCommTare{*this, "MSCommTare"};
  CWNumEdit* NumEditCommPort = new CWNumEdit(this);
  QLabel* lblDevice = MakeLabel("lblDevice", "", this);
  QPushButton* cmdAutoDetect = MakeButton("cmdAutoDetect", "Auto Detect", [this] { cmdAutoDetect_Click(); });
  QPushButton* cmdOK = MakeButton("cmdOK", "OK", [this] { cmdOK_Click(); });
  QStringList outcomes_;  ///< what the ports did that were asked last
  std::unique_ptr<Alarm> look_;
};

}  // namespace

Form* MakeConnect(std::function<void(bool)> reached) { return new Connect(std::move(reached)); }

}  // namespace bexlow::link
