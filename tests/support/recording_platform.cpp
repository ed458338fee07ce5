#include "support/recording_platform.hpp"

#include <cerrno>

namespace vornelt {
namespace {

// Passes bytes on to a real stream until a byte limit, then fails as a full disk would.
class FailingStream final : public TextOutputStream {
public:
    FailingStream(std::unique_ptr<TextOutputStream> inner, size_t limit) : inner_(std::move(inner)), left_(limit) {}
    void Write(std::string_view bytes) override {
        if (bytes.size() > left_) {
            inner_->Write(bytes.substr(0, left_));
            left_ = 0;
            throw IOError(ENOSPC);
        }
        left_ -= bytes.size();
        inner_->Write(bytes);
    }
    void Close() override { inner_->Close(); }

private:
    std::unique_ptr<TextOutputStream> inner_;
    size_t left_;
};

}  // namespace

std::unique_ptr<TextOutputStream> RecordingPlatform::CreateTextFile(const FolderItem& file) {
    if (failCreateTextFile) return nullptr;
    auto stream = Platform::CreateTextFile(file);
    if (stream && failWriteAfterBytes) return std::make_unique<FailingStream>(std::move(stream), *failWriteAfterBytes);
    return stream;
}

}  // namespace vornelt
