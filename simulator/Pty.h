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
  /// @throws std::system_error: no pseudo-terminal, or the link can't be made; errc::file_exists where
  /// something that is no link
  ///         stands in its place
  explicit Pty(std::string link);
  ~Pty();
  Pty(const Pty&) = delete;
  Pty& operator=(const Pty&) = delete;

  const std::string& Device() const { return device_; }
  int Master() const { return master_.Number(); }

  /// To wait on for openings and closings of the device; -1 where the system can't tell them.
  int Watch() const { return watch_.Number(); }

  /// True while a program holds the device open; always true where the system can't tell.
  bool IsOpen() const { return opened_ > 0 || watch_.Number() < 0; }

  /// Takes in openings and closings. @return whether the last holder closed the device in between
  bool TakeClosing();

  /// Drops what nobody has read and undoes what the last holder set: the next one finds a fresh line, as on a
  /// real one.
  void Reset();

  /// Bytes that have arrived, as many as fit; 0 = none waiting.
  std::size_t Read(std::span<std::uint8_t> bytes);

  /// Never blocks. @return how many bytes the line took
  std::size_t Write(std::span<const std::uint8_t> bytes);

 private:
  void MakeLink();

  Descriptor master_;
  std::string device_;
  Descriptor ownEnd_;  // held, so that the line outlives the program's closing of it
  Descriptor watch_;
  std::string link_;
  int opened_ = 0;
};

}  // namespace bexlow::simulator
