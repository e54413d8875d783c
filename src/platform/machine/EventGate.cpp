#include "platform/machine/EventGate.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMetaObject>
#include <QScopeGuard>
#include <QWidget>

#include <algorithm>
#include <utility>

namespace bexlow::platform {

EventGate& EventGate::Get() {
  static EventGate gate;
  return gate;
}

void EventGate::Offer(const void* source, Handler handler, std::function<void()> deliver) {
  if (std::ranges::any_of(queue_, [&](const Waiting& waiting) { return waiting.source == source; })) return;
  queue_.push_back({source, std::move(handler), std::move(deliver)});
  Wake();
}

void EventGate::CollectAndDeliver(const std::function<void()>& collect) {
  {
    const auto end = qScopeGuard([this] {  // also if `collect` throws
      collecting_ = false;
      Wake();
    });
    collecting_ = true;
    collect();
  }
  DeliverOne();
}

bool EventGate::Click(const QWidget* where, const std::function<void()>& action, const std::string& handler) {
  if (Held()) return false;
  const QWidget* modal = QApplication::activeModalWidget();
  if (modal != nullptr && where != nullptr && where->window() != modal) return false;
  const bool unnamed = handler.empty() && where != nullptr;
  Run({where, unnamed ? where->objectName().toStdString() + "_Click" : handler}, [&] {
    action();
    if (!std::exchange(waited_, false)) return;
    QCoreApplication::processEvents();
    for (auto* widget : QApplication::allWidgets())  // and one that is still held down
      if (auto* button = qobject_cast<QAbstractButton*>(widget)) button->setDown(false);
  });
  return true;
}

bool EventGate::DeliverOne() {
  if (Held() || queue_.empty()) return false;
  const auto next = std::move(queue_.front());
  queue_.pop_front();
  Run(next.handler, next.deliver);
  return true;
}

void EventGate::Run(const Handler& handler, const std::function<void()>& body) {
  const Hold hold;
  const auto end = qScopeGuard([this] { running_ = nullptr; });
  running_ = handler.screen;
  if (guard_ == nullptr) return body();
  guard_(handler, body);
}

// Each posted event delivers one item, so that painting and input run between two deliveries.
void EventGate::Wake() {
  if (woken_ || collecting_ || Held() || queue_.empty()) return;
  woken_ = true;
  QMetaObject::invokeMethod(
      qApp,
      [this] {
        woken_ = false;
        DeliverOne();
        Wake();
      },
      Qt::QueuedConnection);
}

}  // namespace bexlow::platform
