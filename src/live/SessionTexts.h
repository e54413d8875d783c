// The words of a remote session: what a user reads about ports and peer, and how bytes are shown.
#pragma once

#include <QString>

#include <cstdint>
#include <string>
#include <system_error>

namespace bexlow::platform {
class Winsock;
}

namespace bexlow::live {

/// Why a typed text is no port.
/// @param box  the label of the text box
std::string NoPortText(const std::string& box, const std::string& typed);

/// Which local port could not be taken, why, and what to do.
std::string NotBoundText(std::int32_t port, const std::system_error& error);

/// What the socket listens on and whom it sends to.
std::string SocketText(const platform::Winsock& socket);

/// A datagram as it is shown: its beginning, one character a byte, control characters as their symbols.
QString ReceivedText(const std::string& datagram);

/// A typed text as it is sent: one byte a character, lines ended by CR LF.
std::string DatagramBytes(const QString& text);

}  // namespace bexlow::live
