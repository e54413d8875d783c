// The words of a remote session: what a user reads about ports and peer, and how bytes are shown.
#pragma once

#include <QString>

#include "platform/controls/Winsock.h"

namespace bexlow::live {

inline std::string Beginning(const std::string& text) {
  constexpr qsizetype MostShown = 60;
  const QString whole = QString::fromStdString(text);
  if (whole.size() <= MostShown) return text;
  return (whole.left(MostShown) + "...").toStdString();
}

inline std::string PeerWords(const platform::Winsock& socket) {
  const std::string host = Beginning(socket.RemoteHost());
  switch (socket.PeerState()) {
    case platform::Winsock::Peer::Unnamed:
      return "The peer has no name.";
    case platform::Winsock::Peer::LookingUp:
      return "Looking up the name " + host + ".";
    case platform::Winsock::Peer::NotFound:
      return "No IPv4 address is known for " + host + ".";
    case platform::Winsock::Peer::Known:
      break;
  }
  const std::string address = socket.PeerAddress();
  const std::string port = ", port " + std::to_string(socket.RemotePort()) + ".";
  return "The peer is " + host + (host == address ? "" : " (" + address + ")") + port;
}

/// Why a typed text is no port.
/// @param box  the label of the text box
inline std::string NoPortText(const std::string& box, const std::string& typed) {
  return box + " \"" + Beginning(typed) +
         "\" is no port: a port is a number from 1 to 65535.\r\nPlease correct " + box +
         ", then click Reset.";
}

/// Which local port could not be taken, why, and what to do.
inline std::string NotBoundText(std::int32_t port, const std::system_error& error) {
  const std::string which = "Port " + std::to_string(port) + " cannot be used: ";
  const std::string remedy = " into Bind and, on the other computer, into Remote Port; then click Reset.";
  if (error.code() == std::errc::permission_denied)
    return which + "ports below 1024 need a right that your user lacks on this system.\r\n" +
           "Please put a number from 1024 to 65535" + remedy;
  if (error.code() == std::errc::address_in_use)
    return which +
           "a program on this computer uses it already.\r\nPlease end that program, or put another number" +
           remedy;
  return which + error.what() + "\r\nPlease put another number" + remedy;
}

/// What the socket listens on and whom it sends to.
inline std::string SocketText(const platform::Winsock& socket) {
  const int port = socket.LocalPort();
  const std::string own = port == 0 ? "No port is bound: nothing is sent or received."
                                    : "Bound to port " + std::to_string(port) + ".";
  return own + "\n" + PeerWords(socket);
}

/// A datagram as it is shown: its beginning, one character a byte, control characters as their symbols.
inline QString ReceivedText(const std::string& datagram) {
  constexpr qsizetype MostShown = 2000;  // characters of a datagram, which may have 65,507
  // The symbols of the control characters in their order, and that of Delete.
  constexpr char16_t SymbolForNull = 0x2400, SymbolForDelete = 0x2421;
  const auto isControl = [](QChar c) { return c.unicode() < 0x20 && c != '\t' && c != '\r' && c != '\n'; };
  const auto size = static_cast<qsizetype>(datagram.size());
  QString text = QString::fromLatin1(datagram.data(), std::min(size, MostShown));
  for (auto& c : text) {
    if (isControl(c)) c = QChar(static_cast<char16_t>(SymbolForNull + c.unicode()));
    if (c.unicode() == 0x7F) c = QChar(SymbolForDelete);
  }
  if (size > MostShown) text += QString("\n... %1 bytes in all").arg(size);
  return text;
}

/// A typed text as it is sent: one byte a character, lines ended by CR LF.
inline std::string DatagramBytes(const QString& text) {
  return QString(text).replace('\n', "\r\n").toLatin1().toStdString();
}

}  // namespace bexlow::live
