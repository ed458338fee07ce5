#include "support/recording_platform.hpp"

#include <cerrno>

namespace vornelt {
namespace {

// Passes bytes on to a real stream until a byte limit, then fails as a full disk would.
class FailingStream final : public TextOutputStream {
public:
    FailingStream(std::unique_ptr<TextOutputStream> inner, size_t limit) : inner_(std::move(inner)), left_(limit) {}
    bool Write(std::string_view bytes, ErrorStatus* error) override {
        if (bytes.size() > left_) {
            inner_->Write(bytes.substr(0, left_), error);
            left_ = 0;
            return Fail(error, ErrorStatus::Outcome::CannotSave, "No space left on device", ENOSPC);
        }
        left_ -= bytes.size();
        return inner_->Write(bytes, error);
    }
    bool Close(ErrorStatus* error) override { return inner_->Close(error); }
    bool Replaces() const noexcept override { return inner_->Replaces(); }

private:
    std::unique_ptr<TextOutputStream> inner_;
    size_t left_;
};

}  // namespace

std::unique_ptr<TextOutputStream> RecordingPlatform::CreateTextFile(const FolderItem& file, ErrorStatus* error) {
    if (failCreateTextFile) {
        Fail(error, ErrorStatus::Outcome::CannotSave, "Permission denied", EACCES);
        return nullptr;
    }
    auto stream = Platform::CreateTextFile(file, error);
    if (stream && failWriteAfterBytes) return std::make_unique<FailingStream>(std::move(stream), *failWriteAfterBytes);
    return stream;
}

}  // namespace vornelt
