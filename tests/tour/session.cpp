// The remote session with two programs on one computer: this one samples the logger and sends, another one,
// with a runtime folder of its own and no logger, receives.
#include <QCoreApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProcess>

#include <cmath>
#include <fstream>
#include <iostream>
#include <span>

#include "platform/instruments/CWKnob.h"
#include "tour/stages.h"

namespace bexlow::tour {

namespace {

// Any user may bind these; 1001 and 1002, from which the screen starts, need a right.
constexpr auto SenderPort = "41001";
constexpr auto ReceiverPort = "41002";

constexpr int PictureAt = 200;  // datagrams
constexpr int QuietMs = 1500;   // the sender has ended

void SetPorts(Robot& robot, const char* remote, const char* own) {
  robot.Type("txtPort", remote);
  robot.Type("txtBind", own);
  robot.Press("Reset");
  Require(robot.Text("lblSocket").starts_with(std::string("Bound to port ") + own + "."),
          "the port is bound");
}

/// The program that receives, until nothing has come for a while.
class Receiver {
 public:
  explicit Receiver(const std::filesystem::path& folder) {
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.start(QCoreApplication::applicationFilePath(),
                   {"--receiver", "--output", QString::fromStdString(folder.string())});
  }
  ~Receiver() { process_.kill(), process_.waitForFinished(); }

  void WaitUntilBound(Robot& robot) {
    robot.WaitUntil("the second program", 20'000,
                    [this] { return process_.readAllStandardOutput().contains("bound"); });
  }
  bool Ended() const { return process_.state() == QProcess::NotRunning && process_.exitCode() == 0; }

 private:
  QProcess process_;
};

/// Every datagram received was sent, in this order; a datagram may get lost, even on one computer.
void CompareReceived(const std::vector<std::string>& received, std::span<const std::vector<int>> sent) {
  Require(received.size() >= PictureAt, "the second program received too little");
  std::size_t next = 0;
  for (const auto& words : sent) {
    const auto datagram = "BX" + AngleOfWord(words.at(0), 180) + "/" + AngleOfWord(words.at(1), 90) + "BX";
    if (next < received.size() && received[next] == datagram) ++next;
  }
  Require(next == received.size(),
          "what was received is not what was sent: " + received[std::min(next, received.size() - 1)]);
}

}  // namespace

void ShareAngles(Tour& tour) {
  auto& robot = tour.robot;
  const auto folder = tour.dataFiles.parent_path() / "receiver";
  const auto before = tour.standIn.Samples().size();
  robot.Key(Qt::Key_F11, Qt::ControlModifier);
  robot.Choose("Display", "Remote Session");
  robot.Rest(1200);
  robot.Picture("remote");
  SetPorts(robot, ReceiverPort, SenderPort);
  robot.Mark("optSend");
  Receiver receiver(folder);
  receiver.WaitUntilBound(robot);
  robot.Choose("Data", "Sample");
  robot.WaitUntil("the second program's picture", 20'000,
                  [&] { return exists(folder / "remote-receiving.png"); });
  robot.Choose("Data", "Sample");
  robot.WaitUntil("the second program's end", 20'000, [&] { return receiver.Ended(); });
  const auto sent = tour.standIn.Samples();
  CompareReceived(LinesOf(FileText(folder / "received.txt")), std::span(sent).subspan(before));
  robot.Choose("Data", "Sample");
  robot.Rest(1200);
  robot.Picture("remote-sampling");
  robot.Choose("Data", "Sample");
  robot.Choose("Data", "Return");
}

void ReceiveAngles(Robot& robot, const std::filesystem::path& output) {
  robot.Key(Qt::Key_F12, Qt::ControlModifier);
  robot.Choose("Display", "Remote Session");
  robot.Mark("optSession2");
  robot.Mark("optDialYes");
  SetPorts(robot, SenderPort, ReceiverPort);
  auto& box = robot.The<QPlainTextEdit>("txtReceive");
  std::ofstream file(output / "received.txt");
  int count = 0;
  QElapsedTimer quiet;
  QObject::connect(&box, &QPlainTextEdit::textChanged, &box, [&] {
    file << box.toPlainText().toStdString() << std::endl;
    ++count;
    quiet.start();
  });
  std::cout << "bound" << std::endl;
  robot.WaitUntil("datagrams", 30'000, [&] { return count >= PictureAt; });
  robot.Picture("remote-receiving");
  robot.WaitUntil("the end of the datagrams", 30'000, [&] { return quiet.elapsed() > QuietMs; });
  box.disconnect();
  const auto last = box.toPlainText().toStdString();
  const double x = std::nearbyint(std::stod(last.substr(2)));
  Require(robot.The<platform::CWKnob>("dialX").Value() == x, "the dial shows what came last: " + last);
}

}  // namespace bexlow::tour
