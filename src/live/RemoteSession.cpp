#include "live/RemoteSession.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QSignalBlocker>

#include <exception>
#include <system_error>

#include "live/AngleRows.h"
#include "live/Datagram.h"
#include "live/IP.h"
#include "live/LiveStrips.h"
#include "live/SessionRoles.h"
#include "live/SessionTexts.h"
#include "platform/instruments/CWKnob.h"
#include "platform/machine/HostName.h"
#include "platform/machine/Machine.h"
#include "shared/Chords.h"
#include "shared/ErrorHandler.h"
#include "shared/NumberBox.h"
#include "shared/Records.h"
#include "values/NumberText.h"

namespace bexlow::live {

using shared::Guarded;
using shared::Shared;

namespace {

// The peer at first: by name this computer, by address a usual one of a private network.
constexpr auto DefaultPeerName = "localhost";
constexpr const char* DefaultPeerNumbers[] = {"192", "168", "1", "2"};

std::string TrimmedText(const QLineEdit& box) {
  return box.text().trimmed().toStdString();
}

/// The port in a box, 0 where there is none.
std::int32_t PortIn(const QLineEdit& box) {
  const double port = values::RoundHalfEven(values::LeadingNumber(box.text().toStdString()));
  return port >= 1 && port <= platform::LastUdpPort ? values::ToInt32(port) : 0;
}

}  // namespace

RemoteSession::RemoteSession()
    : Form("RemoteSession", "Remote Session"),
      MSComm1(*this, "MSComm1"),
      udpPeerA(*this, "udpPeerA"),
      chain_(*this, MSComm1, link::CommandName::SampleAngles,
             [this](const link::Bytes& reply) { Take(reply); }) {
  BuildMenu();
  BuildBody();
  LinkTexts();
  udpPeerA.DataArrival = [this] { udpPeerA_DataArrival(); };
  udpPeerA.PeerLookedUp = [this] { ShowSocket(); };
  OnCloseRequest = [this] { Unload(); };
  OnActivity = [this] { return chain_.Activity(); };
  StartWith([this] { Form_Load(); });
}

void RemoteSession::BuildMenu() {
  auto* menu = AddMenu("mnuData", "&Data");
  mnuSample = AddCheckEntry(
      menu, "mnuSample", "&Sample",
      [this] {
        chain_.Toggle(
            *mnuSample, [this] { PrepareRun(); }, [this] { FinishRun(); });
      },
      shared::SampleKey);
  AddSeparator(menu, "mnuSep");
  AddEntry(menu, "mnuReturn", "&Return", [this] { Unload(); });
}

void RemoteSession::LinkTexts() {
  connect(txtSend, &QPlainTextEdit::textChanged, this, [this] { txtSend_Change(); });
  for (const auto& axis : axes_) {
    auto* dial = axis.dial;
    connect(axis.text, &QLineEdit::textChanged, dial,
            [dial](const QString& text) { dial->Value(values::LeadingNumber(text.toStdString())); });
  }
}

void RemoteSession::Form_Load() {
  Guarded(*this, "Form_Load", [this] {
    txtWhoAmI->setText(QString::fromStdString(platform::HostName()));
    ShowPorts(SessionRoles[0]);
    txtRH5->setText(DefaultPeerName);
    for (std::size_t i = 0; i < txtRH.size(); ++i) txtRH[i]->setText(DefaultPeerNumbers[i]);
    udpPeerA.RemoteHost(DefaultPeerName);
    udpPeerA.RemotePort(PortIn(*txtPort));
    BindLocalPort();
    fraDial->setEnabled(false);
    const auto numbers = GetIP(*this);
    if (!numbers) return;
    for (std::size_t i = 0; i < txtLH.size(); ++i) txtLH[i]->setText(QString::fromStdString((*numbers)[i]));
  });
}

bool RemoteSession::SendToPeer() const {
  return optSend->isChecked();
}

bool RemoteSession::ShowOnDials() const {
  return optDialYes->isChecked();
}

// The socket keeps its old ports until Reset.
void RemoteSession::ApplyRole(const SessionRole& role) {
  mnuSample->setEnabled(role.sends);
  fraSend->setEnabled(role.sends);
  fraDial->setEnabled(!role.sends);
  strips_->Clear();
  ShowPorts(role);
}

void RemoteSession::ShowPorts(const SessionRole& role) {
  txtPort->setText(role.port);
  txtBind->setText(role.bind);
}

std::string RemoteSession::PeerText() const {
  if (!optRemoteHost1->isChecked()) return TrimmedText(*txtRH5);
  std::string address;
  for (const auto* number : txtRH) address += (number == txtRH.front() ? "" : ".") + TrimmedText(*number);
  return address;
}

void RemoteSession::cmdReset_Click() {
  udpPeerA.Close();
  udpPeerA.RemoteHost(PeerText());
  udpPeerA.RemotePort(PortIn(*txtPort));
  if (udpPeerA.RemotePort() == 0) platform::MsgBox(NoPortText("Remote Port", txtPort->text().toStdString()));
  BindLocalPort();
}

void RemoteSession::BindLocalPort() {
  const auto port = PortIn(*txtBind);
  try {
    udpPeerA.Bind(port);
  } catch (const std::system_error& error) {
    ShowSocket();
    return platform::MsgBox(port == 0 ? NoPortText("Bind", txtBind->text().toStdString())
                                      : NotBoundText(port, error));
  }
  ShowSocket();
}

void RemoteSession::ShowSocket() {
  lblSocket->setText(QString::fromStdString(SocketText(udpPeerA)));
}

void RemoteSession::PrepareRun() {
  fraSession->setEnabled(false);
  strips_->Clear();
}

// Nothing tells the peer that the samples have ended.
void RemoteSession::FinishRun() {
  fraSession->setEnabled(true);
  for (const auto& axis : axes_) axis.text->clear();
}

void RemoteSession::Take(const link::Bytes& reply) {
  const auto words = link::AngleWords(reply);
  if (!words) return;
  auto& sample = Shared.LiveSample;
  for (const auto& row : AngleRows) DecodeAngle(row, *words, sample);
  ShowOnAxes(sample.AngleX, sample.AngleY);
  if (!SendToPeer()) return;
  OutgoingText = Datagram(sample.AngleX, sample.AngleY);
  SetSendText(OutgoingText);
}

void RemoteSession::SetSendText(const std::string& text) {
  {
    const QSignalBlocker quiet(txtSend);
    txtSend->setPlainText(QString::fromStdString(text));
  }
  SendText(txtSend->toPlainText());
}

// The box also emits textChanged when its text is the same.
void RemoteSession::txtSend_Change() {
  const QString text = txtSend->toPlainText();
  if (text != sentText_) SendText(text);
}

// If sending fails, this datagram is lost and sampling goes on.
void RemoteSession::SendText(const QString& text) {
  sentText_ = text;
  try {
    udpPeerA.SendData(DatagramBytes(text));
  } catch (const std::exception&) {}
}

// Datagrams from any sender are shown; what is not a pair of angles is ignored.
void RemoteSession::udpPeerA_DataArrival() {
  const std::string& datagram = udpPeerA.GetData();
  txtReceive->setPlainText(ReceivedText(datagram));
  if (ShowOnDials()) ShowReceivedAngles(datagram);
}

void RemoteSession::ShowReceivedAngles(const std::string& datagram) {
  const auto body = DatagramBody(datagram);
  if (!body) return;
  const auto [x, y] = AnglesOfBody(*body);
  ReceivedX = x.value_or(ReceivedX);
  ReceivedY = y.value_or(ReceivedY);
  ShowOnAxes(ReceivedX, ReceivedY);
}

void RemoteSession::ShowOnAxes(double x, double y) {
  axes_[0].text->setText(shared::Shown(x));
  axes_[1].text->setText(shared::Shown(y));
  strips_->Add(0, x);
  strips_->Add(1, y);
  strips_->Show();
}

}  // namespace bexlow::live
