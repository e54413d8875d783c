// The UDP control: a socket on a local port, a peer by name or address, one event for each datagram.
#pragma once

#include <QHostAddress>

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>

class QHostInfo;
class QUdpSocket;

namespace bexlow::platform {

class Form;

inline constexpr int LastUdpPort = 65535;

class Winsock {
 public:
  /// @param owner  the screen that the control goes with: leaving the screen ends the binding
  /// @param name   as it appears in reports of failures
  Winsock(Form& owner, std::string name);
  ~Winsock();
  Winsock(const Winsock&) = delete;
  Winsock& operator=(const Winsock&) = delete;

  enum class Peer { Unnamed, LookingUp, Known, NotFound };
  const std::string& RemoteHost() const { return remoteHost_; }
  /// A computer name or a dotted address. A name is looked up in the background, and nothing is sent before
  /// it is known.
  void RemoteHost(const std::string& host);
  Peer PeerState() const { return peerState_; }
  /// The peer's address, empty while it is not known.
  std::string PeerAddress() const;
  /// Called when a look-up has ended.
  std::function<void()> PeerLookedUp;

  std::int32_t RemotePort() const { return remotePort_; }
  void RemotePort(std::int32_t port) { remotePort_ = port; }

  /// Takes a local port, for this program alone. Throws std::system_error: invalid_argument for no port,
  /// permission_denied, address_in_use, or io_error with the system's words; the socket stays closed then.
  void Bind(std::int32_t port);
  /// The bound port, 0 for none.
  int LocalPort() const;
  /// Ends the binding and drops what came in. On a closed socket nothing happens.
  void Close();

  /// Sends one datagram. Nothing happens while the peer is not known. Throws std::system_error if the socket
  /// is not bound, there is no remote port, or the system refuses the datagram.
  void SendData(const std::string& text);
  /// The datagram of the running DataArrival.
  const std::string& GetData() const { return current_; }
  /// Raised for each datagram, in order.
  std::function<void()> DataArrival;

 private:
  void End();
  void LookUp(const QString& name);
  void ForgetLookUp();
  void EndLookUp();
  void Collect();
  void OfferNext();
  void Deliver();

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
