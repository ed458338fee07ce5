#pragma once
// The routines of the other subsystems that the window handlers call. The handlers reach
// them through this one table, so that a test can put recorders in their place and read
// back which routine ran in which order.

namespace vornelt {

struct HandlerCalls {
    void (*NewEDL_02)();
    void (*AllAudioOnOff)();
    void (*AllKeysOnOff)();
    void (*AllKeysToDissolve)();
    void (*AllWipesToDissolve)();
    void (*SaveAsDialog)();
    void (*SaveOhneDialog)();
    void (*Open_CMX)();
    void (*FileDropedInEditField)();
};

// The table in use; it starts with the real routines.
HandlerCalls& Calls();
// The real routines.
HandlerCalls RealCalls();

}  // namespace vornelt
