// The file dialogs of a screen. What is set stays set; FileName keeps the last choice until it is emptied.
#pragma once

#include <string>

namespace bexlow::platform {

inline constexpr int OverwritePrompt = 2;     ///< ask before replacing an existing file
inline constexpr int CancelSelected = 32755;  ///< error number of a cancelled dialog

class CommonDialog {
 public:
  bool CancelError = false;  ///< a cancelled dialog throws std::system_error with CancelSelected
  int Flags = 0;
  std::string Filter;   ///< "words|pattern|words|pattern"
  int FilterIndex = 1;  ///< of the pair chosen at first, from 1
  std::string InitDir;
  std::string DefaultExt;     ///< empty: the name is taken as typed
  std::string SuggestedName;  ///< empty: none
  std::string FileName;
  bool Saves = false;  ///< set by Show

  /// True if a file was chosen: its path is in FileName.
  bool ShowSave() { return Show(true); }
  /// The file must exist.
  bool ShowOpen() { return Show(false); }

 private:
  bool Show(bool save);
};

}  // namespace bexlow::platform
