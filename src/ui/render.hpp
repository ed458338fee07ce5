#pragma once
// The routines below the window that the handlers run, on the desktop's session.
#include "passes/passes.hpp"
#include "ui/windows.hpp"
#include "writer/writer.hpp"

namespace vornelt::ui_detail {

inline Document& Doc(Desktop& d) { return d.session.document; }
inline MainWindowState& Window(Desktop& d) { return d.session.MainWindow(); }
inline Platform& Plat(Desktop& d) { return d.session.platform; }

// The whole list rendered anew.
inline void NewList(Desktop& d) { NewEDL_02(Doc(d), Window(d), Plat(d)); }

}  // namespace vornelt::ui_detail
