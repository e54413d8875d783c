// The file dialogs of a screen. What is set stays set; FileName keeps the last choice until it is emptied.
#pragma once

#include <string>

namespace bexlow::platform {

inline constexpr int OverwritePrompt = 2;     ///< ask before replacing an existing file
inline constexpr int MustExist = 6148;        ///< file and path must exist, no read-only box
inline constexpr int CancelSelected = 32755;  ///< error number of a cancelled dialog

class CommonDialog {
 public:
  bool CancelError = false;  ///< a cancelled dialog throws std::system_error with CancelSelected
  int Flags = 0;
  std::string Filter;   ///< "words|pattern|words|pattern"
  int FilterIndex = 1;  ///< from 1
  std::string InitDir;
  std::string DefaultExt;
  std::string FileName;

  void ShowSave() { Show(true); }
  void ShowOpen() { Show(false); }

 private:
  void Show(bool save);
};

}  // namespace bexlow::platform
