#include "graph/DataScreen.h"
#include "link/Launch.h"
#include "platform/machine/System.h"
#include "shared/Screens.h"
#include "shell/MDIForm1.h"
#include "shell/RunsTable.h"

namespace bexlow::shell {

using namespace platform;

namespace {

class Main : public Form {
 public:
  explicit Main(MDIForm1& outer)
      : Form("Main", "Main"), outer_(outer), launch_(*this, [this](auto heard) { LoggerSentOff(heard); }) {
    BuildFileMenu();
    BuildToolsMenu();
    BuildDisplayMenu();
    BuildHelpMenu();
    BuildBody();
    OnCloseRequest = nullptr;
    FirstFocus(this);  // Enter once too often after Connect must open no dialog
    LoggerReached(false);
    outer.OnFilesDropped = [this](const auto& paths) { OpenDataFiles(paths); };
    AddChord(shared::ServiceChord, [this] { mnuRemote->setVisible(!mnuRemote->isVisible()); });
    AddChord(shared::DisplayChord, [this] { ToggleDisplay(); });
  }

 private:
  using MakeScreen = std::function<Form*()>;

  void BuildFileMenu() {
    auto* file = AddMenu("mnuFile", "&File");
    AddEntry(file, "mnuConnect", "&Connect", [this] { mnuConnect_Click(); });
    file->addSeparator()->setObjectName("mnuSep");
    AddEntry(file, "mnuExit", "E&xit", [] { Machine::Get().EndProgram(); });
  }

  /// An entry that shows a screen which talks to the logger and so needs a selected port.
  QAction* AddPortScreen(QMenu* menu, const char* name, const QString& caption, const QString& screen,
                         const MakeScreen& make) {
    return AddEntry(menu, name, caption, [this, screen, make] {
      if (shared::Shared.CurrentCommPort == 0) return MsgBox("No comm port has been selected!");
      ShowScreen(screen, make);
    });
  }

  void BuildToolsMenu() {
    mnuTools = AddMenu("mnuTools", "&Tools");
    AddEntry(mnuTools, "mnuLaunch", "&Launch", [this] { launch_.mnuLaunch_Click(); });
    AddPortScreen(mnuTools, "mnuConfiguration", "&Configuration", "Configuration", config::MakeConfiguration);
    AddPortScreen(mnuTools, "mnuDownloadErase", "&Download", "DownloadErase",
                  [this] { return download::MakeDownloadErase([this] { OpenGraph(); }); });
    AddEntry(mnuTools, "mnuGraph", "&Graph", [this] { ShowScreen("Graph", graph::MakeGraph); });
    AddEntry(mnuTools, "mnuGBP", "Graph &Button Pushes",
             [this] { ShowScreen("GraphBP", review::MakeGraphBP); });
    AddPortScreen(mnuTools, "mnuCalibrate", "Cali&brate", "Calibrate", config::MakeCalibrate);
  }

  void BuildDisplayMenu() {
    mnuDisplay = AddMenu("mnuDisplay", "&Display");
    mnuAcc =
        AddPortScreen(mnuDisplay, "mnuAcc", "A&ccelerometers", "Accelerometers", live::MakeAccelerometers);
    mnuAngles = AddPortScreen(mnuDisplay, "mnuAngles", "&Angles", "Angles", live::MakeAngles);
    mnuRemote =
        AddPortScreen(mnuDisplay, "mnuRemote", "&Remote Session", "RemoteSession", live::MakeRemoteSession);
    mnuRemote->setVisible(false);
  }

  void BuildHelpMenu() {
    auto* help = AddMenu("mnuHelp", "&Help");
    help->setToolTipsVisible(true);
    AddEntry(help, "mnuHelpHelp", "&Help", [] {
      MsgBox(ManualElsewhere);
    })->setToolTip("F1 opens the manual");
    AddEntry(help, "mnuAbout", "&About", [this] { MakeAbout()->ShowModal(&outer_); });
  }

  void BuildBody() {
    auto* label = MakeLabel("Label3", "Bexlow", this);
    auto font = label->font();
    font.setPointSize(34);
    label->setFont(font);
    lblHint = MakeLabel("lblHint", "", this);
    lblHint->setWordWrap(true);
    lblHint->setAlignment(Qt::AlignCenter);

    auto* mark = new QHBoxLayout;
    mark->setSpacing(24);
    mark->addStretch();
    mark->addWidget(MakePicture("Picture1", Emblem, {72, 72}, this));
    mark->addWidget(label);
    mark->addWidget(MakePicture("Image2", ":/trace.svg", {280, 56}, this));
    mark->addStretch();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(24, 24, 24, 24);
    column->setSpacing(16);
    column->addStretch(3);
    column->addLayout(mark);
    column->addWidget(lblHint);
    column->addWidget(MakeRunsTable(this, [this](const auto& path) { OpenDataFiles({path}); }), 1000);
    column->addWidget(BuildOpenButton(), 0, Qt::AlignHCenter);
    column->addStretch(2);
    column->addWidget(launch_.Frame());
    column->addStretch(1);
  }

  // Opens a data file without a logger: the menu Tools is disabled until one has answered.
  QWidget* BuildOpenButton() {
    auto* open = MakeButton("cmdOpenDataFile", "Open a data file...", [this] { cmdOpenDataFile_Click(); });
    open->setToolTip("Shows a data file as graphs. A file can also be dropped on the window.");
    return open;
  }

  Form* ShowScreen(const QString& screen, const MakeScreen& make) {
    auto* child = outer_.Child(screen);
    if (child == nullptr) child = make();
    outer_.ShowChild(child);
    return child;
  }

  void OpenGraph() {
    shared::Shared.GraphAfterDownload = false;
    auto* graph = ShowScreen("Graph", graph::MakeGraph);
    static_cast<graph::DataScreen*>(graph)->Open(shared::Shared.GraphFileName);
  }

  void cmdOpenDataFile_Click() {
    CommonDialog1.Filter = "QBX Files (*.qbx)|*.qbx|All Files (*.*)|*.*";
    if (graph::AskForDataFile(CommonDialog1)) OpenDataFiles({CommonDialog1.FileName});
  }

  // The screens themselves report a file that is not a data file.
  void OpenDataFiles(const std::vector<std::string>& paths) {
    const std::string& path = paths.front();
    if (paths.size() > 1)
      MsgBox("Only the first of these files is opened:\r\n" +
             std::filesystem::path(path).filename().string());
    std::pair<const char*, MakeScreen> screen{"Graph", graph::MakeGraph};
    try {
      const auto text = ReadWhole(path);
      if (files::HoldsPushes(text)) screen = {"GraphBP", review::MakeGraphBP};
      if (files::RecordingKind(text)) screen = {"Recording", review::MakeRecording};
    } catch (const std::exception& error) {
      return MsgBox(std::string("The file cannot be read!\r\n") + error.what());
    }
    static_cast<graph::DataScreen*>(ShowScreen(screen.first, screen.second))->Open(path);
  }

  void mnuConnect_Click() {
    auto* connect = link::MakeConnect([this](bool reached) { LoggerReached(reached); });
    QObject::connect(connect, &Form::Left, this, [this] { ShowHint(); });
    connect->ShowModal(&outer_);
  }

  void ToggleDisplay() {
    const bool enable = !mnuDisplay->isEnabled();
    mnuDisplay->setEnabled(enable);
    mnuAcc->setVisible(!enable);
    mnuAngles->setVisible(!enable);
    mnuRemote->setVisible(enable);
  }

  void LoggerReached(bool reached) {
    reachedPort_ = reached ? shared::Shared.CurrentCommPort : std::int16_t{0};
    sentOff_.clear();
    warns_ = false;
    mnuTools->setEnabled(reached);
    mnuDisplay->setEnabled(reached);
    ShowHint();
  }

  /// @param heard  bytes during the erase
  void LoggerSentOff(std::size_t heard) {
    constexpr std::size_t NearlyAll = link::Launch::BytesInPage * files::LastPage * 9 / 10;
    LoggerReached(false);
    sentOff_ =
        "The logger is on its run. When it is back, plug the serial cable in and choose Connect from the "
        "File menu.";
    warns_ = heard < NearlyAll;
    if (warns_)
      sentOff_ = QString(heard == 0 ? "The logger sent nothing during the erase."
                                    : "The erase was heard in part only.") +
                 " Connect again and look before you hand it out.";
    ShowHint();
  }

  // The status line names the device as well as the port, since two loggers may be plugged in.
  void ShowHint() {
    auto letters = font();
    letters.setBold(warns_);
    lblHint->setFont(letters);
    if (!mnuTools->isEnabled() || shared::Shared.CurrentCommPort == 0) {
      outer_.Status().Connection("No logger connected");
      return lblHint->setText(
          sentOff_.isEmpty()
              ? "Plug the serial cable into the logger, then choose Connect from the File menu."
              : sentOff_);
    }
    const auto port = "Comm " + values::NumberText(shared::Shared.CurrentCommPort);
    if (shared::Shared.CurrentCommPort != reachedPort_) {  // Connect was left before it asked there
      outer_.Status().Connection(port + " selected, no logger has answered there yet");
      return lblHint->setText("Choose Connect from the File menu, so that the logger is asked.");
    }
    outer_.Status().Connection("Connected on " + port);
    lblHint->setText(
        QString::fromStdString("The logger answered on " + port +
                               ". Tools leads to launch, settings and download, Display to live readings."));
  }

  MDIForm1& outer_;
  QMenu* mnuTools = nullptr;
  QMenu* mnuDisplay = nullptr;
  QAction* mnuAcc = nullptr;
  QAction* mnuAngles = nullptr;
  QAction* mnuRemote = nullptr;
  QLabel* lblHint = nullptr;
  QString sentOff_;               ///< what was seen of the last launch, until a logger is asked again
  bool warns_ = false;            ///< something was wrong with it
  std::int16_t reachedPort_ = 0;  ///< where a logger answered last
  CommonDialog CommonDialog1;
  link::Launch launch_;
};

}  // namespace

Form* MakeMain(MDIForm1& outer) { return new Main(outer); }

}  // namespace bexlow::shell
