// The remote session: roles, addresses, ports, what goes out and comes in, all of it on this computer.

#include "live/SessionTexts.h"
#include "stories/LiveStory.h"

namespace bexlow::test {

/// Processes real events until a condition holds, without the sleeps of Qt's own wait.
bool Until(const std::function<bool()>& condition, int limitMs = 10'000) {
  const auto end = std::chrono::steady_clock::now() + milliseconds(limitMs);
  while (!condition() && std::chrono::steady_clock::now() < end) QCoreApplication::processEvents();
  return condition();
}

/// Another computer, as far as the program can tell.
struct PeerSocket {
  PeerSocket() { EXPECT_TRUE(socket_.bind(QHostAddress::LocalHost, 0)); }
  int Port() const { return socket_.localPort(); }
  void Send(const QByteArray& bytes, int port) {
    EXPECT_GE(socket_.writeDatagram(bytes, QHostAddress::LocalHost, static_cast<quint16>(port)), 0);
  }
  /// The next datagram; "(none)" where none comes.
  std::string Next(int waitMs = 10'000) {
    if (!Until([this] { return socket_.hasPendingDatagrams(); }, waitMs)) return "(none)";
    QByteArray bytes(static_cast<qsizetype>(socket_.pendingDatagramSize()), 0);
    socket_.readDatagram(bytes.data(), bytes.size());
    return bytes.toStdString();
  }
  bool Nothing() { return Next(50) == "(none)"; }
  QUdpSocket socket_;
};

struct RemoteStory : LiveStory {
  /// Whether the default port can be bound depends on the user and on what else runs.
  void SetUp() override {
    StartConnected();
    ServiceChord();
    Choose("Display", "Remote Session");
    if (!machine.boxes.empty() && machine.boxes.front().starts_with("Port 1001 cannot be used: "))
      machine.boxes.pop_front();
    EXPECT_TRUE(Until([&] { return !Contains(Text("lblSocket"), "Looking up"); }));
    machine.wire.clear();
  }
  void Pick(const char* option) {
    The<QRadioButton>(option).click();
    machine.Settle();
  }
  void AddressPeer() {
    Pick("optRemoteHost1");
    for (const auto& [box, byte] :
         {std::pair{"txtRH1", "127"}, {"txtRH2", "0"}, {"txtRH3", "0"}, {"txtRH4", "1"}})
      Type(box, byte);
  }
  /// Binds to a free port and addresses the peer.
  void Reset() {
    AddressPeer();
    own = PeerSocket().Port();
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
    machine.Pass(ShownTime);  // the next one is shown at once, too
  }
  void ExpectAngles(const char* x, const char* y) const {
    for (const auto& [axis, text] : {std::pair{"X"s, x}, {"Y"s, y}})
      EXPECT_EQ(std::tuple(Text("txt" + axis), The<CWKnob>("dial" + axis).Value()),
                std::tuple(text, values::LeadingNumber(text)));
  }

  PeerSocket peer;
  int own = 0;
};

TEST_F(RemoteStory, StartsAsASenderThatDoesNotSend) {
  EXPECT_TRUE(Contains(Text("lblSocket"), "localhost (127.0.0.1), port 1002"));
  EXPECT_EQ(Texts("txtRH1", "txtRH2", "txtRH3", "txtRH4"), "192|168|1|2|");
  EXPECT_EQ(Text("txtWhoAmI"), QHostInfo::localHostName().toStdString());
  for (const auto* box : {"txtLH1", "txtLH2", "txtLH3", "txtLH4"})
    EXPECT_TRUE(values::WholeNumber(Text(box)) && The<QLineEdit>(box).isReadOnly()) << box;
  for (const auto* option : {"optSession1", "optNoSend", "optDialNo", "optRemoteHost2"})
    EXPECT_TRUE(The<QRadioButton>(option).isChecked()) << option;
  EXPECT_EQ(Text("txtPort") + Text("txtBind"), "10021001");
  EXPECT_FALSE(The("fraDial").isEnabled());
  for (const auto& [option, sends, ports] :
       {std::tuple{"optSession2", false, "10011002"}, std::tuple{"optSession1", true, "10021001"}}) {
    Pick(option);
    EXPECT_EQ(std::tuple(Offered("Data", "Sample"), The("fraSend").isEnabled(), The("fraDial").isEnabled()),
              std::tuple(sends, sends, !sends));
    EXPECT_EQ(Text("txtPort") + Text("txtBind"), ports);
  }
  The("optSession1").setFocus();
  Sample();
  EXPECT_FALSE(The("fraSession").isEnabled());
  Sample();
  EXPECT_TRUE(The("optSession1").hasFocus()) << "the frame gives the keyboard back";
}

TEST_F(RemoteStory, EverySampleIsADatagramAndSoIsWhatIsTypedOrCleared) {
  Reset();
  SampleFor(ShownTime);
  EXPECT_EQ(Text("txtX"), "16.5");
  EXPECT_TRUE(peer.Nothing());
  EXPECT_EQ(Plain("txtSend"), "");
  Pick("optSend");
  for (const auto& [reply, datagram] :
       {std::pair{logger.angles, "BX16.5/2.7BX"}, std::pair{Bytes{0xFF, 0xA4, 0x00, 0xB6}, "BX-.5/.5BX"},
        std::pair{Bytes{0xFF, 0xFF, 0x7F, 0xFF}, "BX0/90BX"}}) {
    logger.angles = reply;
    machine.Pass(AngleSampleTime * 2);
    peer.Next();  // the sample that was under way
    EXPECT_EQ(peer.Next(), datagram);
  }
  Pick("optNoSend");
  machine.Pass(AngleSampleTime * 2);
  Sample();
  ExpectAngles("", "");
  EXPECT_EQ(Plain("txtSend"), "BX0/90BX");
  EXPECT_TRUE(peer.Nothing()) << "one a sample, and none from the next one on";

  Press("Clear");
  EXPECT_EQ(Plain("txtSend") + peer.Next(), "");
  TypeInto(The<QPlainTextEdit>("txtSend"), QString::fromLatin1("a\xe9"));
  EXPECT_EQ(peer.Next(), "a");
  EXPECT_EQ(peer.Next(), "a\xe9");
}

// The boxes hold 7 and 8 before each datagram.
TEST_F(RemoteStory, DecodesWhatBearsTheMarksAndShowsTheRestOnly) {
  struct Row {
    const char* what;
    QByteArray bytes;
    const char *x, *y;
    std::string shown = bytes.toStdString();
  };
  Pick("optSession2");
  Reset();
  Pick("optDialYes");
  for (const auto& row : {Row{"halves go to the even", "BX12.5/13.5BX", "12", "14"},
                          Row{"no slash", "BX33BX", "7", "33"}, Row{"huge X", "BX1e300/5BX", "7", "5"},
                          Row{"huge Y", "BX5/40000BX", "5", "8"}, Row{"no end mark", "BX1/2", "7", "8"},
                          Row{"line end behind", "BX1/2BX\n", "7", "8"}, Row{"nothing", "", "7", "8"},
                          Row{"no letters", QByteArray("BX1\0\x1F\x7F\xE9/2BX", 11), "1", "2",
                              "BX1\u2400\u241F\u2421\u00E9/2BX"},
                          Row{"the largest", QByteArray(65507, 'a'), "7", "8",
                              std::string(2000, 'a') + "\n... 65507 bytes in all"},
                          Row{"markup", "BX<b>1</b>/2BX", "0", "0"}}) {
    SCOPED_TRACE(row.what);
    Arrives("BX7/8BX");
    Arrives(row.bytes);
    EXPECT_EQ(Plain("txtReceive"), row.shown);
    ExpectAngles(row.x, row.y);
  }
  Pick("optDialNo");
  Arrives("BX1/2BX");
  EXPECT_EQ(Plain("txtReceive"), "BX1/2BX");
  ExpectAngles("0", "0");  // the last row's
  Type("txtX", "45");
  ExpectAngles("45", "0");
  The<QPushButton>("cmdClearReceive").click();
  EXPECT_EQ(Plain("txtReceive"), "");
}

TEST_F(RemoteStory, TheReceiverTellsWhatWasSentAndWhenNothingComes) {
  const auto told = [this](milliseconds later) {
    machine.Pass(later);
    return Status("lblActivity");
  };
  const auto dial = [this] { return The<CWKnob>("dialX").ValueText().toStdString(); };
  Pick("optSession2");
  Reset();
  Pick("optDialYes");
  machine.Pass(250ms - machine.Time() % 250ms);  // to a refresh of the line
  EXPECT_EQ(told(3s), "Nothing received yet");
  for (const auto& [sent, shown] :
       {std::pair{"BX18/1BX", "18°"}, {"BX-.25/1BX", "-0.25°"}, {"BX18.4/1BX", "18.4°"}}) {
    Arrives(sent);
    EXPECT_EQ(dial(), shown);
  }
  EXPECT_EQ(Text("txtX"), "18");
  EXPECT_EQ(told(1s), "Receiving 3 a second");
  EXPECT_EQ(dial(), "18.4°");
  EXPECT_EQ(The<CWGraph>("stripX").Values().back(), 18.4);
  EXPECT_EQ(told(5250ms), "Nothing received for 6 s");
  EXPECT_EQ(dial(), "");
  EXPECT_TRUE(Form::OtherEngaged() == nullptr) << "a receiver leaves the logger to others";
}

TEST_F(RemoteStory, APortThatCannotBeBoundIsToldAndAnotherDoes) {
  AddressPeer();
  const std::string taken = std::to_string(peer.Port());
  const auto tells = [this](const std::string& why) {
    ASSERT_EQ(machine.boxes.size(), 1U);
    for (const auto& part : {why, "then click Reset"s}) EXPECT_TRUE(Contains(machine.boxes.front(), part));
    machine.boxes.clear();
  };
  for (const std::string bind : {taken.c_str(), "65536", "0", "-5", "1e300", "soon", ""}) {
    SCOPED_TRACE(bind);
    Type("txtBind", bind.c_str());
    Press("Reset");
    tells(bind == taken ? "a program on this computer uses it already." : "Bind \"" + bind + "\" is no port");
    Press("Clear");  // sends on a closed socket: in silence
  }
  Reset();
  Arrives("here");
  Type("txtPort", "99999");
  Press("Reset");
  tells("Remote Port \"99999\" is no port");
  Arrives("still bound");
  const std::system_error no(std::make_error_code(std::errc::permission_denied));  // root may use any port
  EXPECT_TRUE(Contains(live::NotBoundText(1001, no), "below 1024 need a right"));
}

TEST_F(RemoteStory, ANameIsLookedUpWhileTheWindowGoesOn) {
  Reset();
  Pick("optRemoteHost2");
  for (const auto* name : {"no such computer", " localhost "}) {
    Type("txtRH5", name);
    Press("Reset");
    EXPECT_TRUE(Contains(Text("lblSocket"), "Looking up")) << "no answer has been waited for";
    TypeInto(The("txtSend"), "x");
  }
  ASSERT_TRUE(Until([&] { return Contains(Text("lblSocket"), "127.0.0.1"); }));
  EXPECT_TRUE(peer.Nothing()) << "sent before the name was known";
  Press("Clear");
  EXPECT_EQ(peer.Next(), "");
  Type("txtRH5", "no such computer");  // the end of the look-up given up above looks alike
  Press("Reset");
  EXPECT_TRUE(Until([&] { return Contains(Text("lblSocket"), "No IPv4 address is known"); }));
  Pick("optRemoteHost1");
  Type("txtRH4", "010");
  Press("Reset");
  EXPECT_TRUE(Contains(Text("lblSocket"), "The peer is 127.0.0.10, port")) << Text("lblSocket");
}

TEST(Winsock, DatagramsWaitInOrderWhileEventsAreHeldAndAFloodIsBounded) {
  VirtualMachine machine;
  Form form{"Owner", "Owner"};
  Winsock socket{form, "udpPeerA"};
  PeerSocket peer;
  std::vector<std::string> arrived;
  const int port = PeerSocket().Port();
  socket.Bind(port);
  socket.DataArrival = [&] { arrived.push_back(socket.GetData()); };
  const auto arriveBehindAHold = [&](int count, int bytes) {
    arrived.clear();
    const EventGate::Hold hold;
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
  ASSERT_TRUE(arrived.size() >= 256 && arrived.size() <= 256 + 64) << arrived.size();
  EXPECT_EQ(arrived[arrived.size() - 2].substr(0, 4), "399 ") << "the newest are kept";
}

}  // namespace bexlow::test
