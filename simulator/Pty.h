// The line: a pseudo-terminal whose other end the program opens like a serial device.
#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace bexlow::simulator {

/// A file descriptor that is closed with its owner.
class Descriptor {
 public:
  explicit Descriptor(int number = -1) : number_(number) {}
  ~Descriptor();
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  int Number() const { return number_; }

 private:
  int number_;
};

class Pty {
 public:
  /// Opens a raw pseudo-terminal and, where a path is given, links it there in one step.
  /// @throws std::system_error: no pseudo-terminal, or the link can't be made; errc::file_exists if its
  /// path is taken by something that is no link
  explicit Pty(std::string link);
  ~Pty();
  Pty(const Pty&) = delete;
  Pty& operator=(const Pty&) = delete;

  const std::string& Device() const { return device_; }
  int Master() const { return master_.Number(); }

  /// A descriptor to wait on for openings and closings of the device; -1 if the system can't report them.
  int Watch() const { return watch_.Number(); }

  /// True while a program holds the device open; always true where the system can't tell.
  bool IsOpen() const { return opened_ > 0 || watch_.Number() < 0; }

  /// Takes in openings and closings. @return whether the last holder closed the device in between
  bool TakeClosing();

  /// Drops unread bytes and undoes the last holder's settings: the next one finds a fresh line, as on a real
  /// device.
  void Reset();

  /// Bytes that have arrived, as many as fit; 0 = none waiting.
  std::size_t Read(std::span<std::uint8_t> bytes);

  /// Never blocks. @return how many bytes the line took
  std::size_t Write(std::span<const std::uint8_t> bytes);

 private:
  void MakeLink();

  Descriptor master_;
  std::string device_;
  Descriptor ownEnd_;  // held open, so that the line stays when the program closes it
  Descriptor watch_;
  std::string link_;
  int opened_ = 0;
};

}  // namespace bexlow::simulator
