#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QSysInfo>

#include <exception>
#include <sstream>

#include "live/Datagram.h"
#include "live/Readings.h"
#include "live/SessionTexts.h"
#include "platform/machine/System.h"
#include "shared/ErrorHandler.h"
#include "shared/NumberBox.h"
#include "shared/Records.h"
#include "shared/Screens.h"
#include "values/Conversions.h"

namespace bexlow::live {

using namespace platform;
using shared::Shared;

namespace {

/// Each role sends to the port that the other binds.
struct SessionRole {
  const char *name, *caption;  ///< of the option
  bool sends;
  const char* port;  ///< of the peer
  const char* bind;  ///< of this computer
};

constexpr SessionRole SessionRoles[] = {
    {"optSession1", "I will send the data", true, "1002", "1001"},
    {"optSession2", "I will receive the data", false, "1001", "1002"},
};

// The peer at first: by name this computer, by address a usual one of a private network.
constexpr auto DefaultPeerName = "localhost";
constexpr const char* DefaultPeerNumbers[] = {"192", "168", "1", "2"};

std::string TrimmedText(const QLineEdit& box) { return box.text().trimmed().toStdString(); }

/// The port in a box, 0 where there is none.
std::int32_t PortIn(const QLineEdit& box) {
  const double port = values::RoundHalfEven(shared::NumberIn(box));
  return port >= 1 && port <= LastUdpPort ? values::ToInt32(port) : 0;
}

class RemoteSession : public link::SamplingScreen {
 public:
  RemoteSession() : SamplingScreen("RemoteSession", "Remote Session", link::CommandName::SampleAngles) {
    auto* columns = new QHBoxLayout(this);
    columns->setContentsMargins(12, 12, 12, 12);
    columns->setSpacing(12);
    columns->addLayout(MakeSettings());
    columns->addLayout(MakeTextsAndDials(), 1);
    connect(txtSend, &QPlainTextEdit::textChanged, this, [this] { txtSend_Change(); });
    udpPeerA.DataArrival = [this] { udpPeerA_DataArrival(); };
    udpPeerA.PeerLookedUp = [this] { ShowSocket(); };
    OnListening = [this] { return Listening(); };
    StartWith([this] { Form_Load(); });
  }

 private:
  /// The controls of one axis.
  struct Axis {
    const AngleRow& row;
    QLineEdit* text = nullptr;
    CWKnob* dial = nullptr;
  };
  using Choice = std::pair<const char*, const char*>;  // name and caption of an option

  QVBoxLayout* MakeSettings() {
    auto* column = new QVBoxLayout;
    column->addWidget(MakeSession());
    auto* switches = new QHBoxLayout;
    switches->addWidget(fraSend);
    switches->addWidget(fraDial);
    optSend = AddSwitch(fraSend, {"optSend", "Send"}, {"optNoSend", "No Send"});
    optDialYes = AddSwitch(fraDial, {"optDialYes", "Yes"}, {"optDialNo", "No"});
    column->addLayout(switches);
    column->addWidget(MakeParameters());
    column->addStretch();
    return column;
  }

  QGroupBox* MakeSession() {
    auto* column = new QVBoxLayout(fraSession);
    for (const auto& role : SessionRoles)
      column->addWidget(
          MakeOption(role.name, role.caption, fraSession, role.sends, [this, &role] { ApplyRole(role); }));
    return fraSession;
  }

  // Two options, the second of them marked. They are read at each sample or datagram and need no handlers.
  QRadioButton* AddSwitch(QGroupBox* frame, const Choice& on, const Choice& off) {
    auto* column = new QVBoxLayout(frame);
    auto* isOn = MakeOption(on.first, on.second, frame, false);
    column->addWidget(isOn);
    column->addWidget(MakeOption(off.first, off.second, frame, true));
    return isOn;
  }

  QGroupBox* MakeParameters() {
    auto* frame = MakeFrame("fraParameters", "Set Session Parameters", this);
    auto* grid = new QGridLayout(frame);
    grid->setColumnStretch(1, 1);
    txtWhoAmI = MakeReadOnlyBox("txtWhoAmI", "Who am I?", frame);
    AddRow(*grid, "Who am I?", txtWhoAmI);
    auto* own = AddNumbers(txtLH, "txtLH", "Local Host", true, frame);
    AddRow(*grid, "Local Host", txtLH[0], own);
    AddPeer(*grid);
    txtPort = MakeTextBox("txtPort", "Remote Port", frame);
    AddRow(*grid, "Remote Port", txtPort);
    txtBind = MakeTextBox("txtBind", "Bind", frame);
    AddRow(*grid, "Bind", txtBind);
    auto* cmdReset = MakeButton("cmdReset", "Reset", [this] { cmdReset_Click(); });
    grid->addWidget(cmdReset, grid->rowCount(), SpanOfBox, Qt::AlignRight);
    lblSocket->setWordWrap(true);
    lblSocket->setMinimumHeight(4 * lblSocket->fontMetrics().lineSpacing());  // a long name takes 3 lines
    lblSocket->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    grid->addWidget(lblSocket, grid->rowCount(), 0, 1, SpanOfBox + 1);
    return frame;
  }

  void AddPeer(QGridLayout& grid) {
    auto* frame = grid.parentWidget();
    optRemoteHost1 = MakeOption("optRemoteHost1", "Remote Host", frame, false);
    auto* optRemoteHost2 = MakeOption("optRemoteHost2", "by name", frame, true);
    int row = grid.rowCount();
    grid.addWidget(optRemoteHost1, row, 0);
    grid.addLayout(AddNumbers(txtRH, "txtRH", "Remote Host", false, frame), row, 1, 1, SpanOfBox);
    txtRH5 = MakeTextBox("txtRH5", "Remote Host by name", frame);
    grid.addWidget(optRemoteHost2, ++row, 0);
    grid.addWidget(txtRH5, row, 1, 1, SpanOfBox);
  }

  QVBoxLayout* MakeTextsAndDials() {
    auto* texts = new QHBoxLayout;
    txtSend = AddText(*texts, "txtSend", "Send", "cmdClearSend", [this] { cmdClearSend_Click(); });
    txtReceive = AddText(*texts, "txtReceive", "Receive", "cmdClearReceive", [this] { txtReceive->clear(); });
    txtReceive->setReadOnly(true);
    txtReceive->setPalette(txtWhoAmI->palette());  // the ground of what only the program fills
    auto* dials = new QHBoxLayout;
    for (auto& axis : axes_) dials->addWidget(MakeAxis(axis));
    AddAngleStrips(*strips_);
    auto* column = new QVBoxLayout;
    column->addLayout(texts, 1);
    column->addLayout(dials, 3);
    column->addWidget(strips_, 2);
    return column;
  }

  QPlainTextEdit* AddText(QHBoxLayout& texts, const char* name, const char* caption, const char* clear,
                          std::function<void()> click) {
    auto* box = new QPlainTextEdit(this);
    box->setObjectName(name);
    box->setAccessibleName(caption);
    box->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    box->setTabChangesFocus(true);
    box->setUndoRedoEnabled(false);
    box->setMinimumHeight(3 * box->fontMetrics().lineSpacing());
    auto* button = MakeButton(clear, "Clear", std::move(click));
    button->setAccessibleDescription(QString("Clears ") + caption);
    auto* grid = new QGridLayout;
    grid->addWidget(MakeLabel("", caption, this, box), 0, 0);
    grid->addWidget(box, 1, 0, 1, 2);
    grid->addWidget(button, 2, 1);
    grid->setColumnStretch(0, 1);
    texts.addLayout(grid);
    return box;
  }

  QGroupBox* MakeAxis(Axis& axis) {
    auto* frame = MakeFrame(axis.row.frame, axis.row.caption, this);
    auto* boxes = new QGridLayout;
    auto* text = axis.text = AddReading(*boxes, axis.row.angle, axis.row.caption, "degrees", frame);
    text->setReadOnly(false);  // what is typed there moves the dial
    text->setPalette({});
    disconnect(text, &QLineEdit::textChanged, text, nullptr);  // the cursor stays where one types
    boxes->setColumnStretch(3, 1);
    auto* dial = axis.dial = MakeDial(axis.row, frame);
    connect(text, &QLineEdit::textChanged, dial, [=] { dial->Value(shared::NumberIn(*text)); });
    strips_->DimAlong(text);
    strips_->DimAlong(dial);
    auto* column = new QVBoxLayout(frame);
    column->addLayout(boxes);
    column->addWidget(dial, 1);
    return frame;
  }

  void Form_Load() {
    shared::Guarded(*this, "Form_Load", [this] {
      txtWhoAmI->setText(QSysInfo::machineHostName());
      ApplyRole(SessionRoles[0]);
      txtRH5->setText(DefaultPeerName);
      for (std::size_t i = 0; i < txtRH.size(); ++i) txtRH[i]->setText(DefaultPeerNumbers[i]);
      udpPeerA.RemoteHost(DefaultPeerName);
      udpPeerA.RemotePort(PortIn(*txtPort));
      BindLocalPort();
      GetIP();
    });
  }

  void GetIP() {
    shared::Guarded(*this, "GetIP", [this] {
      const auto address = HostAddress();
      if (address.empty()) return MsgBox("Winsock.dll is not responding.");
      std::istringstream numbers(address);
      for (std::string number; auto* box : txtLH) {
        std::getline(numbers, number, '.');
        box->setText(QString::fromStdString(number));
      }
    });
  }

  // The socket keeps its old ports until Reset.
  void ApplyRole(const SessionRole& role) {
    mnuSample->setEnabled(role.sends);
    fraSend->setEnabled(role.sends);
    fraDial->setEnabled(!role.sends);
    strips_->Clear();
    received_.reset();
    txtPort->setText(role.port);
    txtBind->setText(role.bind);
  }

  std::string PeerText() const {
    if (!optRemoteHost1->isChecked()) return TrimmedText(*txtRH5);
    std::string address;
    for (const auto* box : txtRH) {
      auto number = TrimmedText(*box);
      while (number.size() > 1 && number.front() == '0') number.erase(0, 1);  // the system reads 010 as 8
      address += (box == txtRH.front() ? "" : ".") + number;
    }
    return address;
  }

  void cmdReset_Click() {
    udpPeerA.Close();
    udpPeerA.RemoteHost(PeerText());
    udpPeerA.RemotePort(PortIn(*txtPort));
    if (udpPeerA.RemotePort() == 0) MsgBox(NoPortText("Remote Port", txtPort->text().toStdString()));
    BindLocalPort();
  }

  void BindLocalPort() {
    const auto port = PortIn(*txtBind);
    try {
      udpPeerA.Bind(port);
    } catch (const std::system_error& error) {
      ShowSocket();
      return MsgBox(port == 0 ? NoPortText("Bind", txtBind->text().toStdString())
                              : NotBoundText(port, error));
    }
    ShowSocket();
  }

  void ShowSocket() { lblSocket->setText(QString::fromStdString(SocketText(udpPeerA))); }

  void Starting() override {
    fraSession->setEnabled(false);
    sends_ = false;
    strips_->Clear();
  }

  // Nothing tells the peer that the samples have ended.
  void Stopped() override {
    strips_->End();
    fraSession->setEnabled(true);
    for (const auto& axis : axes_) axis.text->clear();
  }

  // Each sample is a datagram; boxes, dials and strips follow once a frame, as for those that are received.
  void Take(const link::Bytes& reply) override {
    const auto words = link::AngleWords(reply);
    if (!words) return;
    TakeAngles(*words, *strips_);
    sampleDue_ = true;
    sends_ = false;
    if (!optSend->isChecked()) return;
    OutgoingText = QString::fromStdString(Datagram(Shared.LiveSample.AngleX, Shared.LiveSample.AngleY));
    sendTextDue_ = true;
    sends_ = Transmit(OutgoingText);
  }

  void Show() override {
    if (sampleDue_ || anglesDue_) strips_->Show();
    if (std::exchange(sampleDue_, false))
      for (const auto& axis : axes_)
        axis.text->setText(shared::Shown(Shared.LiveSample.*axis.row.angleField));
    if (std::exchange(sendTextDue_, false)) ShowSendText(OutgoingText);
    if (datagram_) txtReceive->setPlainText(ReceivedText(*std::exchange(datagram_, std::nullopt)));
    if (!std::exchange(anglesDue_, false)) return;
    ShowReceived(axes_[0], ReceivedX);
    ShowReceived(axes_[1], ReceivedY);
  }

  void ShowSendText(const QString& text) {
    const QSignalBlocker quiet(txtSend);
    txtSend->setPlainText(text);
    sentText_ = text;
  }

  // An empty text is sent even if the box was empty.
  void cmdClearSend_Click() {
    ShowSendText("");
    Transmit("");
  }

  // The box also emits textChanged when its text is the same.
  void txtSend_Change() {
    const QString text = txtSend->toPlainText();
    if (text != std::exchange(sentText_, text)) Transmit(text);
  }

  // If sending fails, this datagram is lost and sampling goes on.
  bool Transmit(const QString& text) {
    try {
      return udpPeerA.SendData(DatagramBytes(text));
    } catch (const std::exception&) {
      return false;
    }
  }

  // Datagrams from any sender are shown; what is not a pair of angles is ignored.
  void udpPeerA_DataArrival() {
    datagram_ = udpPeerA.GetData();
    if (!received_) received_.emplace().Begin();
    received_->Count();
    const auto body = optDialYes->isChecked() ? DatagramBody(*datagram_) : std::nullopt;
    if (body) TakeReceivedAngles(AnglesOfBody(*body));
    ShowSoon();
    ShowIfDue();
  }

  void TakeReceivedAngles(const ReceivedAngles& angles) {
    ReceivedX = angles.x.value_or(ReceivedX);
    ReceivedY = angles.y.value_or(ReceivedY);
    strips_->Add(0, ReceivedX.sent);
    strips_->Add(1, ReceivedY.sent);
    anglesDue_ = true;
  }

  // The box tells whole degrees; dial and strip what was sent.
  static void ShowReceived(const Axis& axis, const ReceivedAngle& angle) {
    axis.text->setText(shared::Shown(angle.whole));
    axis.dial->Value(angle.whole, shared::Shown(angle.sent));
  }

  platform::Activity Activity() override {
    auto activity = SamplingScreen::Activity();
    if (activity.phase != "Sampling") return activity;
    activity.details += activity.details.empty() ? "" : ", ";
    activity.details += sends_ ? "sending to " + Beginning(udpPeerA.RemoteHost()) : "not sending";
    return activity;
  }

  platform::Activity Listening() {
    if (mnuSample->isEnabled()) return {};  // the role is to send
    if (!received_) return {"Nothing received yet", ""};
    const auto silent = received_->SilentSeconds();
    if (silent >= link::SilentAfterSeconds)
      return {"Nothing received", "for " + values::DurationText(static_cast<double>(silent)), " "};
    const auto rate = received_->PerSecond();
    return {"Receiving", rate > 0 ? values::CountText(rate) + " a second" : "", " "};
  }

  Winsock udpPeerA{*this, "udpPeerA"};

  QString OutgoingText;
  // Whether the boxes are to be shown anew: txtSend, txtX and txtY with a sample, or with what was received.
  bool sendTextDue_ = false, sampleDue_ = false, anglesDue_ = false;
  std::optional<std::string> datagram_;  ///< not in txtReceive yet
  bool sends_ = false;                   ///< the last sample was sent
  QString sentText_;                     ///< what txtSend held when it changed last
  ReceivedAngle ReceivedX, ReceivedY;
  std::optional<link::Pace> received_;  ///< of datagrams, since the role was chosen

  QGroupBox* fraSession = MakeFrame("fraSession", "Select Session", this);
  QGroupBox* fraSend = MakeFrame("fraSend", "Select Send", this);
  QGroupBox* fraDial = MakeFrame("fraDial", "Display Receive Data", this);
  QRadioButton *optSend = nullptr, *optDialYes = nullptr, *optRemoteHost1 = nullptr;
  QLineEdit* txtWhoAmI = nullptr;
  std::array<QLineEdit*, 4> txtLH{};  ///< txtLH1 to txtLH4
  std::array<QLineEdit*, 4> txtRH{};  ///< txtRH1 to txtRH4
  QLineEdit *txtRH5 = nullptr, *txtPort = nullptr, *txtBind = nullptr;
  QLabel* lblSocket = MakeLabel("lblSocket", "", this);
  QPlainTextEdit *txtSend = nullptr, *txtReceive = nullptr;
  std::array<Axis, 2> axes_{Axis{AngleRows[0]}, Axis{AngleRows[1]}};
  LiveStrips* strips_ = new LiveStrips(this);
};

}  // namespace

Form* MakeRemoteSession() { return new RemoteSession; }

}  // namespace bexlow::live
