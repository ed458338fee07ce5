#pragma once
// What went wrong, for the caller to act on and for a person to read.
//
// A routine that can fail takes `ErrorStatus* error` as its last parameter (null when the
// caller does not want to know) and returns `false`, or an empty value, when it failed; it
// then has filled `*error`. Nothing of Vornelt throws: exceptions are caught where the
// standard library raises them (no memory) and come back as an ErrorStatus.

#include <string>

namespace vornelt {

struct ErrorStatus {
    enum class Outcome {
        Ok,
        BadOption,    // an option the list cannot take
        CannotRead,   // a list that cannot be read
        CannotSave,   // a list or report that cannot be written
        Refused,      // an output that would overwrite something the user meant to keep
        NoMemory,     // not enough memory for this list
        Interrupted,  // stopped by a signal before it was done
    };
    Outcome outcome = Outcome::Ok;
    int systemError = 0;  // the system's error number, where it gave one
    std::string details;  // for a person: "frame rate 29: Vornelt reads 23.976, 24, ... or 60 frames per second"

    bool ok() const noexcept { return outcome == Outcome::Ok; }
};

// Fills `error`, where there is one, and answers false: `return Fail(error, ...);`.
inline bool Fail(ErrorStatus* error, ErrorStatus::Outcome outcome, std::string details, int systemError = 0) {
    if (error) {
        error->outcome = outcome;
        error->systemError = systemError;
        error->details = std::move(details);
    }
    return false;
}

}  // namespace vornelt
