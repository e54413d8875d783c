// The UDP control: a socket on a local port, a peer by name or address, one event for each datagram.
#pragma once

#include <QCoreApplication>
#include <QHostInfo>
#include <QNetworkDatagram>
#include <QUdpSocket>

#include <algorithm>
#include <utility>

#include "platform/controls/Form.h"
#include "platform/machine/EventGate.h"
#include "platform/machine/Machine.h"

namespace bexlow::platform {

inline constexpr int LastUdpPort = 65535;

class Winsock {
 public:
  /// @param owner  the screen that the control goes with: leaving the screen ends the binding
  /// @param name   as it appears in reports of failures
  Winsock(Form& owner, std::string name) : owner_(owner), name_(std::move(name)) {
    owner.AtUnload([this] { End(); });
  }
  ~Winsock() { End(); }
  Q_DISABLE_COPY(Winsock)

  enum class Peer { Unnamed, LookingUp, Known, NotFound };
  const std::string& RemoteHost() const { return remoteHost_; }
  /// A computer name or a dotted address. A name is looked up in the background, and nothing is sent before
  /// it is known.
  // The four numbers on the screen are an IPv4 address, so a name stands for its IPv4 address too.
  void RemoteHost(const std::string& host) {
    ForgetLookUp();
    remoteHost_ = host;
    const QString name = QString::fromStdString(host);
    const bool dotted = peer_.setAddress(name) && peer_.protocol() == QHostAddress::IPv4Protocol;
    peerState_ = dotted ? Peer::Known : host.empty() ? Peer::Unnamed : Peer::LookingUp;
    if (dotted) return;
    peer_.clear();
    if (!host.empty()) LookUp(name);
  }
  Peer PeerState() const { return peerState_; }
  /// The peer's address, empty while it is not known.
  std::string PeerAddress() const { return peerState_ == Peer::Known ? peer_.toString().toStdString() : ""; }
  /// Called when a look-up has ended.
  std::function<void()> PeerLookedUp;

  std::int32_t RemotePort() const { return remotePort_; }
  void RemotePort(std::int32_t port) { remotePort_ = port; }

  /// Takes a local port, for this program alone. Throws std::system_error: invalid_argument for no port,
  /// permission_denied, address_in_use, or io_error with the system's words; the socket stays closed then.
  // Qt's socket tells its first error for ever, so each binding has a socket of its own.
  void Bind(std::int32_t port) {
    if (!IsPort(port)) Throw(std::errc::invalid_argument, "Port " + std::to_string(port));
    if (LocalPort() != 0) Throw(std::errc::already_connected, "The socket is bound already");
    socket_ = std::make_unique<QUdpSocket>();
    QObject::connect(socket_.get(), &QUdpSocket::readyRead, socket_.get(), [this] { Collect(); });
    if (socket_->bind(QHostAddress::AnyIPv4, static_cast<quint16>(port), QUdpSocket::DontShareAddress))
      return;
    const auto code = CodeOf(socket_->error());
    const std::string words = socket_->errorString().toStdString();
    Close();
    Throw(code, "Port " + std::to_string(port) + ": " + words);
  }
  /// The bound port, 0 for none.
  int LocalPort() const { return socket_ ? socket_->localPort() : 0; }
  /// Ends the binding and drops what came in. On a closed socket nothing happens.
  void Close() {
    socket_.reset();
    received_.clear();
    EventGate::Get().Withdraw(this);
  }

  /// Sends one datagram; false, and nothing happens, while the peer is not known. Throws std::system_error if
  /// the socket is not bound, there is no remote port, or the system refuses the datagram.
  bool SendData(const std::string& text) {
    if (LocalPort() == 0) Throw(std::errc::not_connected, "The socket is not bound");
    if (!IsPort(remotePort_))
      Throw(std::errc::invalid_argument, "Remote port " + std::to_string(remotePort_));
    if (peerState_ != Peer::Known) return false;
    const auto size = static_cast<qint64>(text.size());
    if (socket_->writeDatagram(text.data(), size, peer_, static_cast<quint16>(remotePort_)) == size)
      return true;
    Throw(CodeOf(socket_->error()), socket_->errorString().toStdString());
  }
  /// The datagram of the running DataArrival.
  const std::string& GetData() const { return current_; }
  /// Raised for each datagram, in order.
  std::function<void()> DataArrival;

 private:
  static constexpr std::size_t MostWaiting =
      256;                               // while a handler runs or a box is open; the oldest are dropped
  static constexpr int MostAtOnce = 64;  // so that a flood does not keep the window from its other work

  static std::errc CodeOf(QAbstractSocket::SocketError error) {
    if (error == QAbstractSocket::SocketAccessError) return std::errc::permission_denied;
    return error == QAbstractSocket::AddressInUseError ? std::errc::address_in_use : std::errc::io_error;
  }
  static bool IsPort(std::int32_t port) { return port >= 1 && port <= LastUdpPort; }

  void End() {
    Close();
    ForgetLookUp();
  }
  // Qt leaks memory when a look-up is aborted, so one that is no longer needed runs to its end and is
  // ignored. The application object receives it, since the socket may be gone by then.
  void LookUp(const QString& name) {
    lookUp_ = std::make_shared<QHostInfo>();
    QHostInfo::lookupHost(name, qApp, [this, waiting = std::weak_ptr(lookUp_)](const QHostInfo& found) {
      const auto lookUp = waiting.lock();
      if (lookUp == nullptr) return;
      *lookUp = found;
      EventGate::Get().Offer(&lookUp_, {&owner_, name_ + "_PeerLookedUp"}, [this] { EndLookUp(); });
    });
  }
  void ForgetLookUp() {
    lookUp_.reset();
    EventGate::Get().Withdraw(&lookUp_);
  }
  void EndLookUp() {
    const auto found = std::exchange(lookUp_, nullptr)->addresses();
    const auto peer = std::ranges::find(found, QHostAddress::IPv4Protocol, &QHostAddress::protocol);
    peerState_ = peer == found.end() ? Peer::NotFound : Peer::Known;
    if (peer != found.end()) peer_ = *peer;
    if (PeerLookedUp) PeerLookedUp();
  }
  // Qt reports no further datagrams until a socket is read, so those without room are read and dropped.
  void Collect() {
    for (int i = 0; i < MostAtOnce && socket_->hasPendingDatagrams(); ++i) {
      const auto datagram = socket_->receiveDatagram();
      if (!datagram.isValid()) break;
      received_.push_back(datagram.data().toStdString());
      if (received_.size() > MostWaiting) received_.pop_front();
    }
    OfferNext();
  }
  void OfferNext() {
    if (!received_.empty())
      EventGate::Get().Offer(this, {&owner_, name_ + "_DataArrival"}, [this] { Deliver(); });
  }
  void Deliver() {
    if (received_.empty()) return;
    current_ = std::move(received_.front());
    received_.pop_front();
    if (DataArrival) DataArrival();
    OfferNext();
  }

  Form& owner_;
  std::string name_;
  std::unique_ptr<QUdpSocket> socket_;  ///< null where no port is bound
  std::string remoteHost_;
  Peer peerState_ = Peer::Unnamed;
  QHostAddress peer_;
  std::shared_ptr<QHostInfo> lookUp_;  ///< the running look-up; its result when it has ended
  std::int32_t remotePort_ = 0;
  std::deque<std::string> received_;
  std::string current_;
};

}  // namespace bexlow::platform
