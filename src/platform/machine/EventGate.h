// Events reach handlers one at a time: ticks, received bytes and datagrams wait here while a handler runs or
// a box is open; clicks that come meanwhile (a screen reader's press passes an open box) are dropped.
#pragma once

#include <deque>
#include <functional>
#include <string>

class QWidget;

namespace bexlow::platform {

class EventGate {
 public:
  static EventGate& Get();

  struct Handler {
    const QWidget* screen;  ///< or a control on it; null for the outer window
    std::string name;       ///< control, underscore, event
  };
  /// Runs the body of a handler and reports what it throws.
  using Guard = void (*)(const Handler& handler, const std::function<void()>& body);
  /// Who knows how failures are reported sets the guard of all handlers.
  void GuardWith(Guard guard) { guard_ = guard; }

  /// Queues a delivery for a source; a source that already waits keeps its place and its one delivery.
  void Offer(const void* source, Handler handler, std::function<void()> deliver);
  /// Runs `collect`, which takes bytes in, then delivers a waiting event at once, not from the event loop.
  void CollectAndDeliver(const std::function<void()>& collect);
  /// Removes the waiting delivery of a source.
  void Withdraw(const void* source) {
    std::erase_if(queue_, [source](const Waiting& waiting) { return waiting.source == source; });
  }
  /// Runs a user's action now, or drops it while the gate is held or a modal screen lies above its window.
  /// False if it was dropped. Without a name the handler is that of a click on `where`.
  bool Click(const QWidget* where, const std::function<void()>& action, const std::string& handler = {});

  /// A handler has let time pass. What was pressed meanwhile comes before it ends and so is dropped: of a
  /// double click the second one.
  void NoteWait() { waited_ = true; }

  /// Delivers the oldest waiting event. False if there is none or the gate is held.
  bool DeliverOne();
  /// The screen whose handler runs, or a control on it; null if there is none.
  const QWidget* Running() const { return running_; }
  bool Held() const { return depth_ > 0; }

  /// Holds all events as long as it lives. Holds nest.
  class Hold {
   public:
    Hold() { ++Get().depth_; }
    ~Hold() {
      --Get().depth_;
      Get().Wake();
    }
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;
  };

 private:
  struct Waiting {
    const void* source;
    Handler handler;
    std::function<void()> deliver;
  };

  void Run(const Handler& handler, const std::function<void()>& body);
  void Wake();

  Guard guard_ = nullptr;  ///< none: failures go to the caller
  std::deque<Waiting> queue_;
  const QWidget* running_ = nullptr;
  int depth_ = 0;
  bool woken_ = false;
  bool waited_ = false;
  bool collecting_ = false;
};

}  // namespace bexlow::platform
