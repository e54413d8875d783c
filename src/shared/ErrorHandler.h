// The one place where failures end: a record in the error log and a box that asks whether to go on.
#pragma once

#include <functional>
#include <string>

namespace bexlow::platform {
class Form;
}

namespace bexlow::shared {

/// Logs a failure and asks: Retry returns, Cancel ends the program. Nothing is repeated.
/// @param number       the system's error number
/// @param source       the procedure that failed
/// @param screen       where it failed
/// @param description  the system's words
/// @param caption      of the screen, for the status line; empty: of the one whose handler runs
void SimpleErrorHandler(int number, const std::string& source, const std::string& screen,
                        const std::string& description, const std::string& caption = {});

/// Runs a procedure of a screen: holds all other events meanwhile and reports a failure once, under the name
/// of the screen then in front.
/// @param beforeReport  what must be put right before the user is told
void Guarded(const platform::Form& form, const char* procedure, const std::function<void()>& body,
             const std::function<void()>& beforeReport = {});

/// From now on every handler that the event gate runs reports what it throws, in the same way.
void GuardHandlers();

/// The same as Guarded for the routines of a module, or for a screen given by name. False after a failure.
bool GuardedIn(const std::string& place, const char* procedure, const std::function<void()>& body);

/// Keeps the words of a screen's failure, nullptr: of the one whose handler runs, for the status line, with
/// the time.
void NoteFailure(const std::string& words, const platform::Form* screen = nullptr);
/// The screen begins anew what failed, or has succeeded: the status line forgets its failure, not another's.
void ForgetFailure(const platform::Form& screen);

/// Shows a screen's own message about a failure; the reason, or else its first line, stays in the status
/// line.
void TellFailure(const std::string& text, const std::string& reason = {});

}  // namespace bexlow::shared
