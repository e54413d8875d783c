// Module Communications: opening and closing the selected port, writing requests, the block reads.
#pragma once

#include <cstdint>
#include <optional>

#include "link/Protocol.h"
#include "platform/controls/Form.h"
#include "platform/controls/MSComm.h"

namespace bexlow::link {

/// Opens the control on CurrentCommPort unless it is open. A failure is reported under the screen's name; the
/// caller goes on and its next Output fails.
void OpenCommPort(platform::MSComm& comm, const platform::Form& screen);
void CloseCommPort(platform::MSComm& comm, const platform::Form& screen);

/// Writes a request byte by byte, with its pauses. Throws std::system_error if the port is closed or the line
/// is gone.
void Send(platform::MSComm& comm, const Request& request);

/// Opens, empties the receive buffer, writes the block's requests and takes the reply.
/// @return the reply, nothing if its length is not exactly the block's. Throws as Send does, with the port
/// open.
std::optional<Bytes> ReadBlock(platform::MSComm& comm, const platform::Form& screen, const Block& block);

/// How long a reply's end is waited for, in microseconds: two bytes on the line, or the millisecond for which
/// a quick adapter bundles bytes. Or, where a late reply may have the repeat's own behind it, longer than a
/// slow one does.
inline constexpr std::int64_t PromptSilence = 1'100;
inline constexpr std::int64_t LateSilence = 20'000;

/// Takes the reply that a threshold announced. The event comes with the last byte expected; that a reply is
/// too long, or that a second one follows, shows only when the line falls silent. After a wrong count all is
/// waited for and taken, so that the next reply begins on an empty line.
Bytes TakeReply(platform::MSComm& comm, std::size_t expected, std::int64_t silence = PromptSilence);

/// High and low byte of a value of 0 to 65535; 0 after a reported failure (a value whose high part is no
/// 16-bit number).
std::int16_t ValueToMSB(std::int32_t& value);
std::int16_t ValueToLSB(std::int32_t& value);

}  // namespace bexlow::link
