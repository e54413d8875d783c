#include "shared/ErrorHandler.h"

#include <algorithm>
#include <cstdio>
#include <exception>

#include "platform/controls/Form.h"
#include "platform/machine/EventGate.h"
#include "platform/machine/Machine.h"
#include "platform/machine/System.h"
#include "shared/Records.h"

namespace bexlow::shared {

namespace {

constexpr auto Crlf = "\r\n";
constexpr auto Dashes = "----------";

std::string DateText(const platform::LocalTime& now) {
  char text[40];
  const int hour = now.hour % 12 == 0 ? 12 : now.hour % 12;
  std::snprintf(text, sizeof text, "%02d/%02d/%04d %02d:%02d:%02d %s", now.day, now.month, now.year, hour,
                now.minute, now.second, now.hour < 12 ? "am" : "pm");
  return text;
}

// A file name may hold line ends, a record in the log has a line for each of its values.
std::string OneLine(std::string text) {
  std::ranges::replace_if(
      text, [](char c) { return c == '\r' || c == '\n'; }, ' ');
  return text;
}

std::string Report(int number, const std::string& source, const std::string& screen,
                   const std::string& description) {
  return "Date: " + DateText(platform::Machine::Get().Now()) + Crlf +  //
         "Number: " + std::to_string(number) + Crlf +                  //
         "Source: " + source + Crlf +                                  //
         "Screen: " + screen + Crlf +                                  //
         "Description: " + OneLine(description) + Crlf +               //
         "Application: BX323" + Crlf +                                 //
         "Version: " + platform::ProgramVersion();
}

std::string BoxText(const std::string& report) {
  return std::string("The error shown below has occurred!") + Crlf +
         "The data being generated at this time may have been corrupted." + Crlf +
         "Please correct the error or contact Quornell for customer support." + Crlf + Crlf + report + Crlf +
         Crlf + "RETRY will allow application to continue." + Crlf + "CANCEL will terminate application." +
         Crlf;
}

void LogAndAsk(const std::string& report) {
  const std::string record = std::string(Dashes) + Crlf + report + Crlf + Dashes + Crlf + Crlf;
  platform::Append(platform::LogsFolder() / "error.log", record);
  auto& machine = platform::Machine::Get();
  if (machine.Ask(BoxText(report), platform::Buttons::RetryCancel) != platform::Answer::Cancel) return;
  platform::MsgBox("Application will terminate; correct error cause and run application again!");
  machine.EndProgram();
}

struct Failure {
  int number;
  std::string description;
};

std::optional<Failure> FailureOf(const std::function<void()>& body) {
  try {
    body();
    return std::nullopt;
  } catch (const std::system_error& error) {
    return Failure{error.code().value(), error.what()};
  } catch (const std::exception& error) {
    return Failure{0, error.what()};
  }
}

std::string ScreenInFront(const std::string& otherwise) {
  const auto* active = platform::Form::Active();
  return active != nullptr ? active->Name() : otherwise;
}

void Note(const std::string& screen, const std::string& words) {
  const auto now = platform::Machine::Get().Now();
  char time[32];
  std::snprintf(time, sizeof time, "%02d:%02d:%02d ", now.hour, now.minute, now.second);
  Shared.LastFailureScreen = screen;
  Shared.LastFailure = time + screen + ": " + words;
}

// Of the screen whose handler runs; it may lie behind another one.
std::string CaptionOfRunning() {
  const QWidget* widget = platform::EventGate::Get().Running();
  while (widget != nullptr && qobject_cast<const platform::Form*>(widget) == nullptr)
    widget = widget->parentWidget();
  if (widget == nullptr) widget = platform::Form::Active();
  return widget == nullptr ? "Start" : widget->windowTitle().toStdString();
}

}  // namespace

void SimpleErrorHandler(int number, const std::string& source, const std::string& screen,
                        const std::string& description, const std::string& caption) {
  const platform::EventGate::Hold hold;
  Note(caption.empty() ? CaptionOfRunning() : caption, OneLine(description));
  try {
    LogAndAsk(Report(number, source, screen, description));
  } catch (const std::exception&) {
    platform::MsgBox("The SimpleErrorHandler sub routine has errored!");
  }
}

void Guarded(const platform::Form& form, const char* procedure, const std::function<void()>& body,
             const std::function<void()>& beforeReport) {
  const platform::EventGate::Hold hold;
  const auto failure = FailureOf(body);
  if (!failure) return;
  if (beforeReport) beforeReport();
  SimpleErrorHandler(failure->number, procedure, ScreenInFront(form.Name()), failure->description,
                     form.windowTitle().toStdString());
}

void GuardHandlers() {
  platform::EventGate::Get().GuardWith(
      [](const platform::EventGate::Handler& handler, const std::function<void()>& body) {
        if (const auto failure = FailureOf(body))
          SimpleErrorHandler(failure->number, handler.name, ScreenInFront("MDIForm1"), failure->description);
      });
}

bool GuardedIn(const std::string& place, const char* procedure, const std::function<void()>& body) {
  const platform::EventGate::Hold hold;
  const auto failure = FailureOf(body);
  if (!failure) return true;
  SimpleErrorHandler(failure->number, procedure, place, failure->description);
  return false;
}

void NoteFailure(const std::string& words, const platform::Form* screen) {
  Note(screen ? screen->windowTitle().toStdString() : CaptionOfRunning(), words);
}

void ForgetFailure(const platform::Form& screen) {
  if (Shared.LastFailureScreen == screen.windowTitle().toStdString()) Shared.LastFailure.clear();
}

void TellFailure(const std::string& text, const std::string& reason) {
  Note(CaptionOfRunning(), reason.empty() ? text.substr(0, text.find(Crlf)) : reason);
  platform::MsgBox(text);
}

}  // namespace bexlow::shared
