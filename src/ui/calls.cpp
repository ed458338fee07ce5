#include "ui/calls.hpp"

#include "document/load.hpp"
#include "passes/passes.hpp"
#include "writer/writer.hpp"

namespace vornelt {

HandlerCalls RealCalls() {
    return HandlerCalls{&NewEDL_02,  &AllAudioOnOff,  &AllKeysOnOff,   &AllKeysToDissolve,    &AllWipesToDissolve,
                        &SaveAsDialog, &SaveOhneDialog, &Open_CMX, &FileDropedInEditField};
}

HandlerCalls& Calls() {
    static HandlerCalls calls = RealCalls();
    return calls;
}

}  // namespace vornelt
