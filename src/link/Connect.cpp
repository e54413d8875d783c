#include "link/Connect.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include <exception>
#include <utility>

#include "link/Communications.h"
#include "platform/controls/CWNumEdit.h"
#include "platform/controls/Controls.h"
#include "platform/machine/Machine.h"
#include "platform/machine/Ports.h"
#include "platform/machine/Settings.h"
#include "shared/ErrorHandler.h"
#include "shared/General.h"
#include "shared/Records.h"
#include "values/Conversions.h"
#include "values/NumberText.h"

namespace bexlow::link {

using platform::MsgBox;
using platform::Pointer;
using shared::Guarded;
using shared::Shared;

Connect::Connect(std::function<void(bool)> reached)
    : Form("Connect", "Connect"),
      reached_(std::move(reached)),
      MSComm1(*this),
      MSCommTare(*this),
      NumEditCommPort(new platform::CWNumEdit(this)),
      lblDevice(platform::MakeLabel("lblDevice", "", this)),
      cmdOK(MakeButton("cmdOK", "OK", [this] { cmdOK_Click(); })),
      cmdAutoDetect(MakeButton("cmdAutoDetect", "Auto Detect", [this] { cmdAutoDetect_Click(); })) {
  Build();
  NumEditCommPort->Value(Shared.CurrentCommPort);
  ShowDevice();
  FirstFocus(NumEditCommPort);
}

void Connect::Build() {
  auto* label = platform::MakeLabel("Label1", "Select Comm Port", this, NumEditCommPort);
  NumEditCommPort->setObjectName("NumEditCommPort");
  NumEditCommPort->setAccessibleName("Select Comm Port");
  NumEditCommPort->SetLimits(0, platform::LastComm);
  lblDevice->setWordWrap(true);
  lblDevice->setMinimumHeight(2 * fontMetrics().lineSpacing());
  connect(NumEditCommPort, &QDoubleSpinBox::valueChanged, this, [this] { ShowDevice(); });
  DefaultButton(cmdOK);
  cmdOK->setDefault(true);  // drawn as what Enter presses
  OnCloseRequest = [this] { Unload(); };

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

void Connect::ShowDevice() {
  const int port = values::ToInt16(NumEditCommPort->Value());
  if (port == 0) return lblDevice->setText("0 stands for no port.");
  const auto info = platform::Machine::Get().DescribePort(port);
  if (info.device.empty()) return lblDevice->setText("No device stands behind this number.");
  const std::string what = info.description.empty() ? "" : ": " + info.description;
  lblDevice->setText(QString::fromStdString("Device " + info.device + what));
}

void Connect::EnableButtons(bool enabled) {
  cmdOK->setEnabled(enabled);
  cmdAutoDetect->setEnabled(enabled);
}

bool Connect::CommPortExists(std::int16_t port) {
  try {
    MSComm1.CommPort(port);
    MSComm1.PortOpen(true);
    MSComm1.PortOpen(false);
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

bool Connect::LoggerAnswers(std::int16_t port, const std::string& baud) {
  DetectedCommPort = 0;
  try {
    MSComm1.CommPort(port);
    MSComm1.Settings(baud + ",n,8,1");
    MSComm1.PortOpen(true);
    Send(MSComm1, Ping());
    shared::WaitMilliseconds(PingWaitMs);
    const Bytes reply = MSComm1.Input();
    MSComm1.PortOpen(false);
    if (reply == Bytes{Ping().front().byte}) DetectedCommPort = port;
  } catch (const std::exception&) {
    MSComm1.PortOpen(false);
  }
  return DetectedCommPort != 0;
}

void Connect::cmdAutoDetect_Click() {
  if (!LoggerIsFree(*this)) return;
  Guarded(*this, "cmdAutoDetect_Click", [this] {
    MousePointer(Pointer::Busy);
    EnableButtons(false);
    bool found = false;
    for (std::int16_t port = 1; port <= platform::LastComm && !found; ++port) {
      lblDevice->setText(QString("Asking on Comm %1...").arg(port));
      platform::Machine::Get().Repaint();
      found = CommPortExists(port) && LoggerAnswers(port, "19200");
    }
    EnableButtons(true);
    if (found) NumEditCommPort->Value(DetectedCommPort);
    ShowDevice();
    MousePointer(Pointer::Normal);
    if (!found) return MsgBox("Bexlow not found on Comm 1-16!");
    MsgBox("Bexlow found on Comm " + values::NumberText(DetectedCommPort) + "!");
    cmdOK->setFocus();
  });
}

void Connect::cmdOK_Click() {
  if (NumEditCommPort->Value() != 0 && !LoggerIsFree(*this)) return;
  Guarded(*this, "cmdOK_Click", [this] {
    MousePointer(Pointer::Busy);
    EnableButtons(false);
    Shared.CurrentCommPort = values::ToInt16(NumEditCommPort->Value());
    platform::SaveSetting("Startup", "CurrentCommPort", values::NumberText(Shared.CurrentCommPort));
    MousePointer(Pointer::Normal);
    if (Shared.CurrentCommPort == 0) {
      MsgBox("No Comm port has been selected!");
      return Unload();
    }
    platform::Machine::Get().Repaint();
    const bool retrieved = RetrieveOnBoardParameters();
    if (!retrieved)
      shared::TellFailure(
          "A communication failure has occurred!\r\n"
          "On-board parameters were not retrieved from the Bexlow.\r\n"
          "Check your hardware set-up and try again.");
    reached_(retrieved);
    Unload();
  });
}

bool Connect::RetrieveOnBoardParameters() {
  if (!CommPortExists(Shared.CurrentCommPort)) return false;
  try {
    const auto reply = ReadBlock(MSCommTare, *this, TareBlock());
    if (!reply) return false;
    auto& parameters = Shared.OnBoardParameters;
    parameters.XTare = values::SampleWordToAngle(values::Word(*reply, 0), 180);
    parameters.YTare = values::SampleWordToAngle(values::Word(*reply, 2), 90);
    parameters.UpdateTimeIncrement = (*reply)[4];
    return true;
  } catch (const std::exception&) {
    MSCommTare.PortOpen(false);
    return false;
  }
}

}  // namespace bexlow::link
