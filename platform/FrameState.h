// Show state, closing and system menu of a top-level window of any class. "The frame" of a control is its
// `window()`.
#pragma once

#include "KvTypes.h"

class CKvMenu;
class QWidget;

namespace kv {

inline constexpr int kShowNormal = 1;
inline constexpr int kShowMinimised = 2;
inline constexpr int kShowMaximised = 3;

/// Menu 12027: entries for applications, and commands that act on the frame.
inline constexpr UINT kFrameMenu = 12027;
inline constexpr UINT kCommandFirstApplication = 32813;
inline constexpr UINT kCommandLastApplication = 32816;
inline constexpr UINT kCommandRestore = 32822;
inline constexpr UINT kCommandMinimise = 32823;
inline constexpr UINT kCommandMaximise = 32824;
inline constexpr UINT kCommandClose = 32826;

/// 1 normal, 2 minimised, 3 maximised or on the full screen; a minimised frame is minimised whatever it was.
int FrameShowState(const QWidget& frame);
/// Maximised or on the full screen, and not minimised.
bool IsFrameZoomed(const QWidget& frame);
bool HasMaximiseBox(const QWidget& frame);
/// The frame is one that has resize borders, and has them just now.
bool HasResizeBorder(const QWidget& frame);
/// Shows the frame in that state without asking anybody.
void ShowFrame(QWidget& frame, int showCommand);
/// Asks a `CKvFrameWnd` and shows it when it agrees; other windows agree. @return false when it refused.
bool RequestFrameState(QWidget& frame, int showCommand);
/// Sends WM_CLOSE; when nobody answers, closes the frame. The frame may be gone afterwards.
void CloseFrame(QWidget& frame);

inline bool IsApplicationCommand(UINT command)
{
    return command >= kCommandFirstApplication && command <= kCommandLastApplication;
}

/// Enables "Restore" or "Maximize" of a menu 12027 by the frame's state.
void EnableFrameEntries(CKvMenu& menu, const QWidget& frame);
/// Makes "Restore", "Minimize", "Maximize" and "Close" of a menu 12027 fit for the frame: enables them, or
/// takes the first three and the separator before "Close" out where there is no maximise box.
void FitFrameEntries(CKvMenu& menu, const QWidget& frame);
/// Does one of these commands. @return false for another command. The frame may be gone afterwards.
bool DoFrameCommand(QWidget& frame, UINT command);

} // namespace kv
