// Module Communications: opening and closing the selected port, writing requests, the block reads.
#pragma once

#include "link/Protocol.h"
#include "platform/controls/MSComm.h"

namespace bexlow::link {

/// Opens the control on CurrentCommPort unless it is open. A failure is reported under the screen's name; the
/// caller goes on and its next Output fails.
void OpenCommPort(platform::MSComm& comm, const platform::Form& screen);
void CloseCommPort(platform::MSComm& comm, const platform::Form& screen);

/// True if no other screen has the logger (no port open, no timer running) and no halted erase goes on in it.
/// Otherwise a box tells which, and the caller starts nothing and changes nothing.
bool LoggerIsFree(const platform::Form& screen);

/// Writes a request byte by byte, with its pauses. Throws std::system_error if the port is closed or the line
/// is gone.
void Send(platform::MSComm& comm, std::span<const Step> request);

/// Opens, empties the receive buffer, writes the block's requests and takes the reply.
/// @return the reply, which is right if it has exactly the block's length. Throws as Send does, with the port
/// open.
Bytes ReadBlock(platform::MSComm& comm, const platform::Form& screen, const Block& block);

/// What the status line says of an exchange that goes no further: its request has been without a reply for
/// two seconds or more, or a failure has ended it. Nothing while it goes on.
std::optional<platform::Activity> Halted(const platform::MSComm& comm, const std::string& exchange);

/// From so many wrong replies in a row on a screen says so.
inline constexpr int ToldWrongReplies = 3;

/// Longer than the longest pause within a reply, in microseconds: an adapter may hold bytes back for 16 ms.
inline constexpr std::int64_t LineSilenceUs = 20'000;

/// Appends to a reply the bytes that follow it. Only they show that a reply is too long or came twice, and on
/// a line that delivers in bursts they come some milliseconds later. The reply is right if it then has the
/// expected length.
///
/// `firstSteps` holds the steps with which both a repeat of the request and the next request begin. They are
/// written first, and what comes during their pauses belongs to the reply, so no time is lost. The caller
/// sends the rest at once: after a long wait the logger takes it for a command. If `firstSteps` is empty, a
/// wrong reply is read until the line is silent, so that the next one begins on an empty line.
/// @param silentUs  the least time that this takes, in microseconds
void EndReply(platform::MSComm& comm, Bytes& reply, std::size_t expected,
              std::span<const Step> firstSteps = {}, std::int64_t silentUs = LineSilenceUs);

/// High and low byte of a value of 0 to 65535; 0 after a reported failure (a value whose high part is no
/// 16-bit number).
std::int16_t ValueToMSB(std::int32_t& value);
std::int16_t ValueToLSB(std::int32_t& value);

}  // namespace bexlow::link
