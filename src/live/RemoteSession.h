// Shares live angles between two computers: one samples and sends, the other receives and shows.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>

#include "link/SamplingChain.h"
#include "platform/controls/Form.h"
#include "platform/controls/MSComm.h"
#include "platform/controls/Winsock.h"

class QGridLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QRadioButton;

namespace bexlow::platform {
class CWKnob;
}

namespace bexlow::live {

struct AngleRow;
class LiveStrips;
struct SessionRole;

class RemoteSession : public platform::Form {
  Q_OBJECT

 public:
  RemoteSession();

 private:
  /// The controls of one axis.
  struct Axis {
    const AngleRow* row = nullptr;
    QLineEdit* text = nullptr;
    platform::CWKnob* dial = nullptr;
  };

  void BuildMenu();
  void BuildBody();
  QGroupBox* BuildSession();
  struct Choice {
    const char *name, *caption;
  };
  /// A frame of two options, the second of them marked.
  QGroupBox* BuildSwitch(const char* name, const char* caption, const Choice& on, const Choice& off,
                         QRadioButton*& isOn);
  QGroupBox* BuildParameters();
  void BuildPeer(QGridLayout& grid);
  QWidget* BuildText(const char* name, const char* caption, const char* clear, QPlainTextEdit*& box,
                     const std::function<void()>& click);
  QGroupBox* BuildAxis(Axis& axis);
  void LinkTexts();

  void Form_Load();
  void ApplyRole(const SessionRole& role);
  void ShowPorts(const SessionRole& role);
  void cmdReset_Click();
  void PrepareRun();
  void FinishRun();
  void Take(const link::Bytes& reply);
  void udpPeerA_DataArrival();

  bool SendToPeer() const;
  bool ShowOnDials() const;
  std::string PeerText() const;
  void BindLocalPort();
  void ShowSocket();
  /// Puts a text into txtSend and sends it, even if it was there already: every sample is a datagram.
  void SetSendText(const std::string& text);
  void txtSend_Change();
  void SendText(const QString& text);
  void ShowReceivedAngles(const std::string& datagram);
  void ShowOnAxes(double x, double y);

  platform::MSComm MSComm1;
  platform::Winsock udpPeerA;
  link::SamplingChain chain_;

  std::string OutgoingText;
  std::int16_t ReceivedX = 0, ReceivedY = 0;
  QString sentText_;  ///< what txtSend held when it changed last

  QAction* mnuSample = nullptr;
  QGroupBox *fraSession = nullptr, *fraSend = nullptr, *fraDial = nullptr;
  QRadioButton *optSend = nullptr, *optDialYes = nullptr, *optRemoteHost1 = nullptr;
  QLineEdit* txtWhoAmI = nullptr;
  std::array<QLineEdit*, 4> txtLH{};  ///< txtLH1 to txtLH4
  std::array<QLineEdit*, 4> txtRH{};  ///< txtRH1 to txtRH4
  QLineEdit *txtRH5 = nullptr, *txtPort = nullptr, *txtBind = nullptr;
  QLabel* lblSocket = nullptr;
  QPlainTextEdit *txtSend = nullptr, *txtReceive = nullptr;
  std::array<Axis, 2> axes_;
  LiveStrips* strips_ = nullptr;
};

}  // namespace bexlow::live
