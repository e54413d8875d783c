// The remote session: roles, addresses and ports, what goes out and what comes in. Everything stays on this
// computer.
#include <QHostInfo>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QUdpSocket>

#include "live/SessionTexts.h"
#include "logic/Expect.h"
#include "platform/controls/EventGate.h"
#include "platform/controls/Winsock.h"
#include "stories/LiveStory.h"

namespace bexlow::test {

constexpr int LongWaitMs = 10'000;

/// Processes real events until a condition holds, without the sleeps of Qt's own wait.
template <class Condition>
bool Until(Condition condition, int limitMs = LongWaitMs) {
  const auto end = std::chrono::steady_clock::now() + milliseconds(limitMs);
  while (!condition() && std::chrono::steady_clock::now() < end) QCoreApplication::processEvents();
  return condition();
}

/// Another computer, as far as the program can tell.
class PeerSocket {
 public:
  PeerSocket() { EXPECT_TRUE(socket_.bind(QHostAddress::LocalHost, 0)); }
  int Port() const { return socket_.localPort(); }
  void Send(const QByteArray& bytes, int port) {
    EXPECT_EQ(socket_.writeDatagram(bytes, QHostAddress::LocalHost, static_cast<quint16>(port)),
              bytes.size());
  }
  /// The next datagram; "(none)" where none comes.
  std::string Next(int waitMs = LongWaitMs) {
    if (!Until([this] { return socket_.hasPendingDatagrams(); }, waitMs)) return "(none)";
    QByteArray bytes(static_cast<qsizetype>(socket_.pendingDatagramSize()), 0);
    socket_.readDatagram(bytes.data(), bytes.size());
    return bytes.toStdString();
  }
  bool Nothing() { return Next(50) == "(none)"; }

 private:
  QUdpSocket socket_;
};

int FreePort() {
  return PeerSocket().Port();
}

class RemoteStory : public LiveStory {
 protected:
  void SetUp() override { OpenScreen(); }
  /// Opens the screen. Whether the default port can be bound depends on the user and on what else runs.
  void OpenScreen() {
    if (outer == nullptr) StartConnected();
    if (!Shown("Display", "Remote Session")) Key(Qt::Key_F11, Qt::ControlModifier);
    Choose("Display", "Remote Session");
    if (!machine.boxes.empty() && machine.boxes.front().starts_with("Port 1001 cannot be used: "))
      machine.boxes.pop_front();
    EXPECT_TRUE(Until([&] { return Text("lblSocket").find("Looking up") == std::string::npos; }));
    machine.wire.clear();
  }
  void Pick(const char* option) {
    The<QRadioButton>(option).click();
    machine.Settle();
  }
  void AddressPeer() {
    Pick("optRemoteHost1");
    for (const auto& [box, number] : {std::pair{"txtRH1", "127"}, std::pair{"txtRH2", "0"},
                                      std::pair{"txtRH3", "0"}, std::pair{"txtRH4", "1"}})
      Type(box, number);
  }
  /// Binds to a free port and addresses the peer.
  void Reset() {
    AddressPeer();
    own = FreePort();
    Type("txtBind", QString::number(own));
    Type("txtPort", QString::number(peer.Port()));
    Press("Reset");
  }
  std::string Plain(const char* name) const { return The<QPlainTextEdit>(name).toPlainText().toStdString(); }
  /// Sends to the screen and waits until it shows something new.
  void Arrives(const QByteArray& bytes) {
    The<QPlainTextEdit>("txtReceive").setPlainText("nothing yet");
    peer.Send(bytes, own);
    EXPECT_TRUE(Until([&] { return Plain("txtReceive") != "nothing yet"; }));
  }
  double Dial(const char* name) const { return The<platform::CWKnob>(name).Value(); }
  bool Enabled(const char* name) const { return The(name).isEnabled(); }

  PeerSocket peer;
  int own = 0;
};

TEST_F(RemoteStory, StartsAsASenderThatDoesNotSend) {
  EXPECT_EQ(Text("txtRH5"), "localhost");
  EXPECT_NE(Text("lblSocket").find("(127.0.0.1), port 1002"), std::string::npos) << Text("lblSocket");
  EXPECT_EQ(Text("txtRH1") + "." + Text("txtRH2") + "." + Text("txtRH3") + "." + Text("txtRH4"),
            "192.168.1.2");
  EXPECT_EQ(Text("txtWhoAmI"), QHostInfo::localHostName().toStdString());
  for (const auto* box : {"txtLH1", "txtLH2", "txtLH3", "txtLH4"}) {
    EXPECT_TRUE(live::WholeNumber(Text(box)).has_value()) << box;
    EXPECT_TRUE(The<QLineEdit>(box).isReadOnly());
  }
  for (const auto* option : {"optSession1", "optNoSend", "optDialNo", "optRemoteHost2"})
    EXPECT_TRUE(The<QRadioButton>(option).isChecked()) << option;
  EXPECT_EQ(Text("txtPort") + Text("txtBind"), "10021001");
  EXPECT_FALSE(Enabled("fraDial"));
  for (const auto& [option, sends, ports] :
       {std::tuple{"optSession2", false, "10011002"}, std::tuple{"optSession1", true, "10021001"}}) {
    SCOPED_TRACE(option);
    Pick(option);
    EXPECT_EQ(Offered("Data", "Sample"), sends);
    EXPECT_EQ(Enabled("fraSend"), sends);
    EXPECT_EQ(Enabled("fraDial"), !sends);
    EXPECT_EQ(Text("txtPort") + Text("txtBind"), ports);
  }

  Reset();
  The("optSession1").setFocus();
  Sample();
  EXPECT_FALSE(Enabled("fraSession"));
  machine.Pass(AngleSampleTime * 3);
  EXPECT_EQ(Text("txtX"), "16.5");
  EXPECT_TRUE(peer.Nothing());
  EXPECT_EQ(Plain("txtSend"), "");
  Sample();
  EXPECT_TRUE(The("optSession1").hasFocus()) << "the frame gives the keyboard back";
}

TEST_F(RemoteStory, EverySampleIsADatagram) {
  Reset();
  Pick("optSend");
  Sample();
  for (const auto& [reply, datagram] :
       {std::pair{logger.angles, "BX16.5/2.7BX"}, std::pair{Bytes{0xFF, 0xA4, 0x00, 0xB6}, "BX-.5/.5BX"},
        std::pair{Bytes{0xFF, 0xFF, 0x7F, 0xFF}, "BX0/90BX"}}) {
    logger.angles = reply;
    machine.Pass(AngleSampleTime * 2);
    peer.Next();  // the sample that was under way
    EXPECT_EQ(peer.Next(), datagram);
    EXPECT_EQ(Plain("txtSend"), datagram);
  }
  EXPECT_TRUE(peer.Nothing()) << "one a sample";
  Pick("optNoSend");
  machine.Pass(AngleSampleTime * 2);
  EXPECT_TRUE(peer.Nothing()) << "takes effect at the next sample";
  Sample();
  EXPECT_EQ(Text("txtX") + Text("txtY"), "");
  EXPECT_EQ(Dial("dialY"), 0);
  EXPECT_EQ(Plain("txtSend"), "BX0/90BX");
  EXPECT_TRUE(peer.Nothing());
}

TEST_F(RemoteStory, WhatIsTypedOrClearedIsSentToo) {
  Reset();
  TypeInto(The<QPlainTextEdit>("txtSend"), QString::fromLatin1("a\xe9"));
  EXPECT_EQ(peer.Next(), "a");
  EXPECT_EQ(peer.Next(), "a\xe9");
  Press("Clear");
  EXPECT_EQ(Plain("txtSend"), "");
  EXPECT_EQ(peer.Next(), "");
  Arrives("x");
  The<QPushButton>("cmdClearReceive").click();
  EXPECT_EQ(Plain("txtReceive"), "");
}

// The boxes hold 7 and 8 before each datagram.
TEST_F(RemoteStory, DecodesWhatBearsTheMarksAndShowsTheRestOnly) {
  struct Row {
    const char* what;
    QByteArray bytes;
    const char *x, *y;
    double dialX, dialY;
  };
  const Row rows[] = {{"halves go to the even", "BX12.5/13.5BX", "12", "14", 12, 14},
                      {"no slash", "BX33BX", "7", "33", 7, 33},
                      {"huge X", "BX1e300/5BX", "7", "5", 7, 5},
                      {"huge Y", "BX5/40000BX", "5", "8", 5, 8},
                      {"no end mark", "BX1/2", "7", "8", 7, 8},
                      {"line end behind", "BX1/2BX\r\n", "7", "8", 7, 8},
                      {"nothing", "", "7", "8", 7, 8},
                      {"nulls", QByteArray("BX1\0/2BX", 8), "1", "2", 1, 2},
                      {"markup", "BX<b>1</b>/2BX", "0", "0", 0, 0}};
  Pick("optSession2");
  Reset();
  Pick("optDialYes");
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    Arrives("BX7/8BX");
    Arrives(row.bytes);
    EXPECT_EQ(Plain("txtReceive"), live::ReceivedText(row.bytes.toStdString()).remove('\r').toStdString());
    EXPECT_EQ(Text("txtX"), row.x);
    EXPECT_EQ(Text("txtY"), row.y);
    EXPECT_EQ(Dial("dialX"), row.dialX);
    EXPECT_EQ(Dial("dialY"), row.dialY);
  }
  Pick("optDialNo");
  Arrives("BX1/2BX");
  EXPECT_EQ(Plain("txtReceive"), "BX1/2BX");
  EXPECT_EQ(Dial("dialY"), 0) << "the last row's";
}

TEST_F(RemoteStory, TheLargestDatagramOfAllBytesIsShownBounded) {
  Pick("optSession2");
  Reset();
  Pick("optDialYes");
  Arrives("BX7/8BX");
  QByteArray bytes("BX");
  for (int i = 2; i < 65505; ++i) bytes += static_cast<char>(i % 256);
  Arrives(bytes + "BX");
  EXPECT_LT(Plain("txtReceive").size(), 10'000U);
  EXPECT_NE(Plain("txtReceive").find("65507 bytes in all"), std::string::npos);
  EXPECT_EQ(Text("txtX"), "0") << "the marks are there, a number is not";
  EXPECT_EQ(live::ReceivedText(std::string("a\0\x1F\x7F\xE9<i>", 8)).toStdString(),
            "a\u2400\u241F\u2421\u00E9<i>");
}

TEST_F(RemoteStory, APortThatCannotBeBoundIsToldAndAnotherDoes) {
  AddressPeer();
  const std::string taken = std::to_string(peer.Port());
  for (const std::string& bind : {taken, std::string("65536"), std::string("0"), std::string("-5"),
                                  std::string("1e300"), std::string("soon"), std::string()}) {
    const auto words =
        bind == taken ? "a program on this computer uses it already." : "Bind \"" + bind + "\" is no port";
    SCOPED_TRACE(words);
    Type("txtBind", bind.c_str());
    Press("Reset");
    ASSERT_EQ(machine.boxes.size(), 1U);
    EXPECT_NE(machine.boxes.front().find(words), std::string::npos) << machine.boxes.front();
    EXPECT_NE(machine.boxes.front().find("then click Reset"), std::string::npos);
    machine.boxes.clear();
    Press("Clear");  // sends on a closed socket: in silence
  }
  Reset();
  Arrives("here");
  EXPECT_EQ(Plain("txtReceive"), "here");
  Press("Reset");
  Arrives("still here");
  Type("txtPort", "99999");
  Press("Reset");
  EXPECT_TRUE(machine.boxes.front().starts_with("Remote Port \"99999\" is no port"));
  machine.boxes.clear();
  Arrives("still bound");
}

TEST(SessionTexts, SayWhichPortWhyAndWhatToDo) {
  const auto text = live::NotBoundText(
      1001, std::system_error(std::make_error_code(std::errc::permission_denied), "Port 1001: no"));
  for (const auto* words : {"Port 1001", "below 1024 need a right", "from 1024 to 65535", "Bind", "Reset"})
    EXPECT_NE(text.find(words), std::string::npos) << text;
}

TEST_F(RemoteStory, ANameIsLookedUpWhileTheWindowGoesOn) {
  Reset();
  Pick("optRemoteHost2");
  const auto begin = std::chrono::steady_clock::now();
  for (const auto* name : {"no such computer", " localhost "}) {
    Type("txtRH5", name);
    Press("Reset");
    TypeInto(The<QPlainTextEdit>("txtSend"), "x");
  }
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(2));
  ASSERT_TRUE(Until([&] { return Text("lblSocket").find("127.0.0.1") != std::string::npos; }));
  EXPECT_TRUE(peer.Nothing()) << "sent before the name was known";
  Press("Clear");
  EXPECT_EQ(peer.Next(), "");
  Type("txtRH5", "no such computer");  // the end of the look-up given up above looks alike
  Press("Reset");
  EXPECT_TRUE(Until([&] { return Text("lblSocket").find("No IPv4 address is known") != std::string::npos; }));
}

TEST_F(RemoteStory, LeavingEndsTheBindingAndThePortInEveryState) {
  for (const bool sampling : {false, true}) {
    if (sampling) OpenScreen();
    Reset();
    if (sampling) Sample();
    peer.Send("on its way", own);
    Leave();
    EXPECT_FALSE(machine.AnyPortOpen());
    QUdpSocket next;
    EXPECT_TRUE(next.bind(QHostAddress::AnyIPv4, static_cast<quint16>(own), QUdpSocket::DontShareAddress));
  }
}

class WinsockTest : public Story {
 protected:
  WinsockTest() {
    socket.Bind(port);
    socket.DataArrival = [this] { arrived.push_back(socket.GetData()); };
  }
  platform::Form form{"Owner", "Owner"};
  platform::Winsock socket{form};
  PeerSocket peer;
  const int port = FreePort();
  std::vector<std::string> arrived;
};

TEST_F(WinsockTest, EachFailureBearsItsOwnCode) {
  const auto codeOf = [this](int to) {
    socket.Close();
    return FailureOf([&] { socket.Bind(to); }).code;
  };
  const auto user = geteuid();
  ASSERT_TRUE(user != 0 || seteuid(65534) == 0);  // nothing is forbidden to root
  EXPECT_NE(codeOf(80), EADDRINUSE);
  EXPECT_EQ(seteuid(user), 0);
  EXPECT_EQ(codeOf(peer.Port()), EADDRINUSE);
}

TEST_F(WinsockTest, DatagramsWaitInOrderWhileEventsAreHeldAndAFloodIsBounded) {
  const auto arriveBehindAHold = [this](int count, int bytes) {
    arrived.clear();
    const platform::EventGate::Hold hold;
    for (int i = 0; i < count; ++i) {
      peer.Send(QByteArray::number(i).leftJustified(bytes), port);
      QCoreApplication::processEvents();
    }
    EXPECT_TRUE(arrived.empty());
  };
  arriveBehindAHold(200, 3);
  ASSERT_TRUE(Until([&] { return arrived.size() == 200; }));
  for (std::size_t i = 0; i < 200; ++i) EXPECT_EQ(std::stoul(arrived[i]), i);
  arriveBehindAHold(400, 60'000);
  peer.Send("later", port);
  EXPECT_TRUE(Until([&] { return !arrived.empty() && arrived.back() == "later"; }));
  EXPECT_GE(arrived.size(), 256U);
  EXPECT_LE(arrived.size(), 256U + 64U);
}

}  // namespace bexlow::test
