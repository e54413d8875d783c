// The event gate, alone and on the real machine with a real message box.
#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>

#include <gtest/gtest.h>
#include <string>

#include "platform/controls/EventGate.h"
#include "platform/controls/Form.h"
#include "platform/controls/Timer.h"
#include "platform/machine/RealMachine.h"
#include "support/VirtualMachine.h"

namespace bexlow::test {

using platform::EventGate;
using platform::Form;

class Gate : public ::testing::Test {
 protected:
  void Offer(const void* source, char name) {
    gate.Offer(source, [this, name] { heard += name; });
  }
  void Click(const QWidget* where, char name) {
    gate.Click(where, [this, name] { heard += name; });
  }
  EventGate& gate = EventGate::Get();
  std::string heard;
  int a = 0, b = 0, c = 0;
};

TEST_F(Gate, KeepsOneDeliveryASourceInTheOrderOfOffers) {
  Offer(&a, 'a');
  Offer(&c, 'c');
  Offer(&b, 'b');
  Offer(&a, 'A');
  EXPECT_EQ(heard, "") << "never delivered on the spot";
  gate.Withdraw(&c);
  while (gate.DeliverOne()) {}
  EXPECT_EQ(heard, "ab");
}

TEST_F(Gate, DeliversNothingWhileHeldHoweverDeepOrWithinADelivery) {
  gate.Offer(&a, [this] {
    heard += 'a';
    Offer(&a, 'x');
    EXPECT_FALSE(gate.DeliverOne());
    Click(nullptr, 'c');
  });
  {
    const EventGate::Hold outer;
    { const EventGate::Hold inner; }
    EXPECT_FALSE(gate.DeliverOne());
    Click(nullptr, 'c');
    QCoreApplication::processEvents();
  }
  EXPECT_EQ(heard, "") << "the event is kept";
  gate.DeliverOne();
  EXPECT_EQ(heard, "a") << "the clicks were dropped";
  QCoreApplication::processEvents();
  EXPECT_EQ(heard, "ax") << "the end of a hold wakes the event loop";
}

TEST_F(Gate, WhatReceivedBytesMakeDueComesAtOnceButNotThroughAHold) {
  const auto receive = [this] { gate.Receive([this] { Offer(&a, 'a'); }); };
  receive();
  EXPECT_EQ(heard, "a");
  {
    const EventGate::Hold hold;
    receive();
    EXPECT_EQ(heard, "a");
  }
  while (gate.DeliverOne()) {}
  EXPECT_EQ(heard, "aa");
}

TEST_F(Gate, AClickBelowAModalScreenIsDropped) {
  VirtualMachine machine;
  Form below("Below", "Below");
  auto* above = new Form("Above", "Above");
  below.show();
  above->ShowModal(&below);
  Click(&below, 'b');
  Click(above, 'a');
  above->Unload();
  Click(&below, 'B');
  EXPECT_EQ(heard, "aB");
}

TEST_F(Gate, ATimerLosesItsWaitingTickWhenDisabled) {
  VirtualMachine machine;
  Form form("Form", "Form");
  platform::Timer timer(form, "Timer1", 100);
  timer.OnTimer = [this] { heard += 't'; };
  timer.Enabled(true);
  machine.Pass(milliseconds(100));
  EXPECT_EQ(heard, "t");
  {
    const EventGate::Hold hold;
    machine.Idle(milliseconds(100));
    timer.Enabled(false);
  }
  machine.Pass(milliseconds(1000));
  EXPECT_EQ(heard, "t");
}

// A real nested event loop: ticks, offers and a screen reader's press come while the box stands.
TEST_F(Gate, ARealMessageBoxHoldsAllEvents) {
  platform::RealMachine machine("/tmp");
  platform::Machine::Install(machine);
  Form form("Form", "Form");
  platform::Timer timer(form, "Timer1", 5);
  timer.OnTimer = [this] { heard += 't'; };
  timer.Enabled(true);
  QTimer::singleShot(100, [&] {
    Offer(&a, 'a');
    Offer(&a, 'A');
    Click(&form, 'c');
    qobject_cast<QMessageBox*>(QApplication::activeModalWidget())->button(QMessageBox::Ok)->click();
  });
  gate.Click(&form, [this] {
    platform::MsgBox("stands for a while");
    EXPECT_EQ(heard, "");
  });
  timer.Enabled(false);
  QCoreApplication::processEvents();
  EXPECT_EQ(heard, "a");
}

}  // namespace bexlow::test
