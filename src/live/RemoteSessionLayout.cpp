// How the RemoteSession screen is built; what it does is in RemoteSession.cpp.
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "live/Dial.h"
#include "live/LiveStrips.h"
#include "live/Readings.h"
#include "live/RemoteSession.h"
#include "live/SessionRoles.h"
#include "platform/controls/Controls.h"

namespace bexlow::live {

using namespace platform;

namespace {

constexpr int SpanOfNumbers = 4;

// Four numbers side by side, as an address is written.
QHBoxLayout* AddNumbers(std::array<QLineEdit*, 4>& boxes, const QString& name, const QString& caption,
                        bool readOnly, QWidget* parent) {
  auto* row = new QHBoxLayout;
  row->setSpacing(4);
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    const QString number = QString::number(i + 1);
    const auto make = readOnly ? MakeReadOnlyBox : MakeTextBox;
    boxes[i] = make((name + number).toLatin1().constData(), caption + " " + number, parent);
    boxes[i]->setFixedWidth(boxes[i]->fontMetrics().horizontalAdvance("000") + 16);
    if (i > 0) row->addWidget(new QLabel(".", parent));
    row->addWidget(boxes[i]);
  }
  row->addStretch();
  return row;
}

void AddRow(QGridLayout& grid, const char* caption, QWidget* buddy, QLayout* content = nullptr) {
  const int row = grid.rowCount();
  grid.addWidget(MakeLabel("", caption, grid.parentWidget(), buddy), row, 0);
  if (content != nullptr) {
    grid.addLayout(content, row, 1, 1, SpanOfNumbers);
  } else {
    grid.addWidget(buddy, row, 1, 1, SpanOfNumbers);
  }
}

}  // namespace

void RemoteSession::BuildBody() {
  axes_ = {Axis{&AngleRows[0]}, Axis{&AngleRows[1]}};
  auto* switches = new QHBoxLayout;
  auto* left = new QVBoxLayout;
  left->addWidget(BuildSession());
  fraSend = BuildSwitch("fraSend", "Select Send", {"optSend", "Send"}, {"optNoSend", "No Send"}, optSend);
  fraDial =
      BuildSwitch("fraDial", "Display Receive Data", {"optDialYes", "Yes"}, {"optDialNo", "No"}, optDialYes);
  switches->addWidget(fraSend);
  switches->addWidget(fraDial);
  left->addLayout(switches);
  left->addWidget(BuildParameters());
  left->addStretch();

  auto* texts = new QHBoxLayout;
  texts->addWidget(BuildText("txtSend", "Send", "cmdClearSend", txtSend, [this] { SetSendText(""); }));
  texts->addWidget(
      BuildText("txtReceive", "Receive", "cmdClearReceive", txtReceive, [this] { txtReceive->clear(); }));
  txtReceive->setReadOnly(true);
  auto* dials = new QHBoxLayout;
  for (auto& axis : axes_) dials->addWidget(BuildAxis(axis));
  auto* right = new QVBoxLayout;
  right->addLayout(texts, 1);
  right->addLayout(dials, 3);
  strips_ = new LiveStrips(this);
  for (const auto& row : AngleRows)
    strips_->AddStrip(row.strip, row.caption, "°", -row.fullScale, row.fullScale);
  right->addWidget(strips_, 2);

  auto* columns = new QHBoxLayout(this);
  columns->setContentsMargins(12, 12, 12, 12);
  columns->setSpacing(12);
  columns->addLayout(left);
  columns->addLayout(right, 1);
}

QGroupBox* RemoteSession::BuildSession() {
  fraSession = MakeFrame("fraSession", "Select Session", this);
  auto* column = new QVBoxLayout(fraSession);
  for (const auto& role : SessionRoles) {
    column->addWidget(
        MakeOption(role.name, role.caption, fraSession, role.sends, [this, &role] { ApplyRole(role); }));
  }
  return fraSession;
}

// The options are read at each sample or datagram and need no handlers.
QGroupBox* RemoteSession::BuildSwitch(const char* name, const char* caption, const Choice& on,
                                      const Choice& off, QRadioButton*& isOn) {
  auto* frame = MakeFrame(name, caption, this);
  auto* column = new QVBoxLayout(frame);
  column->addWidget(isOn = MakeOption(on.name, on.caption, frame, false));
  column->addWidget(MakeOption(off.name, off.caption, frame, true));
  return frame;
}

QGroupBox* RemoteSession::BuildParameters() {
  auto* frame = MakeFrame("fraParameters", "Set Session Parameters", this);
  auto* grid = new QGridLayout(frame);
  grid->setColumnStretch(1, 1);
  txtWhoAmI = MakeReadOnlyBox("txtWhoAmI", "Who am I?", frame);
  AddRow(*grid, "Who am I?", txtWhoAmI);
  auto* own = AddNumbers(txtLH, "txtLH", "Local Host", true, frame);
  AddRow(*grid, "Local Host", txtLH[0], own);
  BuildPeer(*grid);
  txtPort = MakeTextBox("txtPort", "Remote Port", frame);
  AddRow(*grid, "Remote Port", txtPort);
  txtBind = MakeTextBox("txtBind", "Bind", frame);
  AddRow(*grid, "Bind", txtBind);
  auto* cmdReset = MakeButton("cmdReset", "Reset", [this] { cmdReset_Click(); });
  grid->addWidget(cmdReset, grid->rowCount(), SpanOfNumbers, Qt::AlignRight);
  lblSocket = MakeLabel("lblSocket", "", frame);
  lblSocket->setWordWrap(true);
  lblSocket->setMinimumHeight(3 * lblSocket->fontMetrics().lineSpacing());
  lblSocket->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  grid->addWidget(lblSocket, grid->rowCount(), 0, 1, SpanOfNumbers + 1);
  return frame;
}

void RemoteSession::BuildPeer(QGridLayout& grid) {
  auto* frame = grid.parentWidget();
  optRemoteHost1 = MakeOption("optRemoteHost1", "Remote Host", frame, false);
  auto* optRemoteHost2 = MakeOption("optRemoteHost2", "by name", frame, true);
  int row = grid.rowCount();
  grid.addWidget(optRemoteHost1, row, 0);
  grid.addLayout(AddNumbers(txtRH, "txtRH", "Remote Host", false, frame), row, 1, 1, SpanOfNumbers);
  txtRH5 = MakeTextBox("txtRH5", "Remote Host 5", frame);
  grid.addWidget(optRemoteHost2, ++row, 0);
  grid.addWidget(txtRH5, row, 1, 1, SpanOfNumbers);
}

QWidget* RemoteSession::BuildText(const char* name, const char* caption, const char* clear,
                                  QPlainTextEdit*& box, const std::function<void()>& click) {
  auto* part = new QWidget(this);
  box = new QPlainTextEdit(part);
  box->setObjectName(name);
  box->setAccessibleName(caption);
  box->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  box->setTabChangesFocus(true);
  box->setUndoRedoEnabled(false);
  box->setMinimumHeight(3 * box->fontMetrics().lineSpacing());
  auto* label = MakeLabel("", caption, part, box);
  auto* button = MakeButton(clear, "Clear", click);
  button->setAccessibleDescription(QString("Clears ") + caption);
  auto* grid = new QGridLayout(part);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->addWidget(label, 0, 0);
  grid->addWidget(box, 1, 0, 1, 2);
  grid->addWidget(button, 2, 1);
  grid->setColumnStretch(0, 1);
  return part;
}

QGroupBox* RemoteSession::BuildAxis(Axis& axis) {
  auto* frame = MakeFrame(axis.row->frame, axis.row->caption, this);
  auto* boxes = new QGridLayout;
  axis.text = AddReading(*boxes, {axis.row->angle, axis.row->caption, "degrees"}, frame);
  axis.text->setReadOnly(false);  // what is typed there moves the dial
  axis.text->setPalette({});
  boxes->setColumnStretch(3, 1);
  axis.dial = MakeDial(*axis.row, frame);
  auto* column = new QVBoxLayout(frame);
  column->addLayout(boxes);
  column->addWidget(axis.dial, 1);
  return frame;
}

}  // namespace bexlow::live
