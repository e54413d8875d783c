// The event gate, alone and on the real machine with a real message box.
#include "platform/Widgets.h"
#include "platform/controls/MSComm.h"
#include "platform/controls/Timer.h"
#include "platform/machine/RealMachine.h"
#include "support/VirtualLogger.h"

namespace bexlow::test {

struct Gate : ::testing::Test {
  void Offer(const void* source, char name) {
    gate.Offer(source, {}, [this, name] { heard += name; });
  }
  void Click(const QWidget* where, char name) {
    gate.Click(where, [this, name] { heard += name; });
  }
  static void ClickInBox(QMessageBox::StandardButton button) {
    qobject_cast<QMessageBox*>(QApplication::activeModalWidget())->button(button)->click();
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
  gate.Offer(&a, {}, [this] {
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

TEST_F(Gate, WhatReceivedBytesMakeDueComesAtOnceButNotThroughAHoldAndSurvivesAFailure) {
  const auto receive = [this](bool fails) {
    gate.CollectAndDeliver([&] {
      Offer(&a, 'a');
      if (fails) throw std::runtime_error("collecting");
    });
  };
  receive(false);
  EXPECT_EQ(heard, "a");
  {
    const EventGate::Hold hold;
    receive(false);
    EXPECT_EQ(heard, "a");
  }
  QCoreApplication::processEvents();
  EXPECT_EQ(heard, "aa");
  EXPECT_ANY_THROW(receive(true));
  QCoreApplication::processEvents();
  EXPECT_EQ(heard, "aaa");
}

struct TwoOptions : Form {
  explicit TwoOptions(std::string& heard) : Form("Two", "Two") {
    a = MakeOption("a", "a", this, true, [&heard] { heard += 'a'; });
    b = MakeOption("b", "b", this, false, [&heard] { heard += 'b'; });
    b->move(0, 50);
    AtUnload([&heard] { heard += 'u'; });
  }
  using Form::StartWith;
  QRadioButton *a, *b;
  QPushButton* busy = MakeButton("busy", "busy", [this] { busy->setEnabled(false); });
};

TEST_F(Gate, AButtonThatIsEnabledAgainTakesTheKeyboardFromNobody) {
  TwoOptions form(heard);
  for (const bool moved : {false, true}) {
    form.busy->setFocus();
    form.busy->click();
    auto* next = form.focusWidget();
    EXPECT_NE(next, form.busy);
    if (moved) (next = next == form.a ? form.b : form.a)->setFocus();
    form.busy->setEnabled(true);
    EXPECT_EQ(form.focusWidget(), moved ? next : form.busy);
  }
}

TEST_F(Gate, AnOptionRunsItsHandlerOnceWhoeverSetsTheMark) {
  TwoOptions form(heard);
  form.show();
  form.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
  form.b->setFocus();
  form.b->click();
  QTest::keyClick(form.b, Qt::Key_Up);
  auto* actions = QAccessible::queryAccessibleInterface(form.b)->actionInterface();
  actions->doAction(QAccessibleActionInterface::toggleAction());
  EXPECT_EQ(heard, "bab");
  const EventGate::Hold hold;
  form.a->click();
  EXPECT_EQ(heard, "bab");
  EXPECT_TRUE(form.b->isChecked()) << "after a dropped choice the old option is marked again";
}

TEST_F(Gate, AFormThatIsDeletedEndsAndNeverStarts) {
  auto* form = new TwoOptions(heard);
  form->StartWith([this] { heard += 's'; });
  form->deleteLater();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  QCoreApplication::processEvents();
  EXPECT_EQ(heard, "u");
}

TEST_F(Gate, ALineThatPoursIsHeldToItsBuffer) {
  VirtualMachine machine;
  VirtualLogger peer;
  machine.Plug(peer, 1);
  Form form("Form", "Form");
  MSComm comm(form, "MSComm1");
  comm.PortOpen(true);
  machine.Deliver(1, {1, 2});
  for (int i = 0; i < 80; ++i) machine.Deliver(1, Bytes(1000, 9));
  EXPECT_EQ(comm.InBufferCount(), 65536);
  EXPECT_EQ(comm.Input().at(1), 2) << "the newest are dropped";
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

TEST_F(Gate, EnterAndEscapeInARealBox) {
  RealMachine machine("/tmp");
  QMainWindow outer;
  outer.show();
  const auto answer = [&](Buttons buttons, Qt::Key key) {
    QTimer::singleShot(0, [key, &outer] {
      auto* box = QApplication::activeModalWidget();
      EXPECT_EQ(box->parentWidget(), &outer);
      QTest::keyClick(box, key);
    });
    return machine.Ask("?", buttons);
  };
  using Row = std::tuple<Buttons, Answer, Answer>;
  for (const auto& [buttons, enter, escape] :
       {Row{Buttons::Ok, Answer::Ok, Answer::Ok}, Row{Buttons::YesNo, Answer::Yes, Answer::No},
        Row{Buttons::Confirm, Answer::No, Answer::No},
        Row{Buttons::RetryCancel, Answer::Retry, Answer::Retry}})
    EXPECT_EQ(std::pair(answer(buttons, Qt::Key_Return), answer(buttons, Qt::Key_Escape)),
              std::pair(enter, escape));
  QTimer::singleShot(0, [] { ClickInBox(QMessageBox::Cancel); });
  EXPECT_EQ(machine.Ask("?", Buttons::RetryCancel), Answer::Cancel);
}

// A real nested event loop: ticks, offers and a screen reader's press come while the box stands.
TEST_F(Gate, ARealMessageBoxHoldsAllEvents) {
  RealMachine machine("/tmp");
  Machine::Install(machine);
  Form form("Form", "Form");
  Timer timer(form, "Timer1", 5);
  timer.OnTimer = [this] { heard += 't'; };
  timer.Enabled(true);
  QTimer::singleShot(100, [&] {
    Offer(&a, 'a');
    Offer(&a, 'A');
    Click(&form, 'c');
    ClickInBox(QMessageBox::Ok);
  });
  MsgBox("stands for a while");
  EXPECT_EQ(heard, "");
  timer.Enabled(false);
  QCoreApplication::processEvents();
  EXPECT_EQ(heard, "a");
}

}  // namespace bexlow::test
