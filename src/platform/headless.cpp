#include "platform/headless.hpp"

#include <algorithm>

namespace vornelt {

namespace {

template <typename T>
T TakeAnswer(std::deque<T>& answers, T whenEmpty) {
    if (answers.empty()) return whenEmpty;
    T answer = std::move(answers.front());
    answers.pop_front();
    return answer;
}

// Passes bytes on to a real stream until a byte limit, then fails as a full disk would.
class FailingStream final : public TextOutputStream {
public:
    FailingStream(std::unique_ptr<TextOutputStream> inner, size_t limit) : inner_(std::move(inner)), left_(limit) {}
    void Write(std::string_view bytes) override {
        if (bytes.size() > left_) {
            inner_->Write(bytes.substr(0, left_));
            left_ = 0;
            throw IOError("No space left on device");
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

FolderItemRef HeadlessPlatform::ShowOpenDialog(const OpenDialogSpec& dialog) {
    openDialogsShown.push_back(dialog);
    return TakeAnswer<FolderItemRef>(openDialogAnswers, std::nullopt);
}

FolderItemRef HeadlessPlatform::ShowSaveDialog(const SaveDialogSpec& dialog) {
    saveDialogsShown.push_back(dialog);
    return TakeAnswer<FolderItemRef>(saveDialogAnswers, std::nullopt);
}

void HeadlessPlatform::MsgBox(std::string_view text) { messages.emplace_back(text); }

DialogButton HeadlessPlatform::ShowMessageDialog(const MessageDialogSpec& dialog) {
    messageDialogsShown.push_back(dialog);
    return TakeAnswer(messageDialogAnswers, DialogButton::None);
}

int HeadlessPlatform::SetWindowModified(bool modified) {
    windowModifiedMarks.push_back(modified);
    return setWindowModifiedResult;
}

void HeadlessPlatform::Redraw(std::string_view control) {
    redraws.emplace_back(control);
    if (onRedraw) onRedraw(control);
}

std::optional<std::string> HeadlessPlatform::ReadWholeFile(const FolderItem& file) {
    if (std::find(unreadablePaths.begin(), unreadablePaths.end(), file.AbsolutePath()) != unreadablePaths.end())
        return std::nullopt;
    return Platform::ReadWholeFile(file);
}

std::unique_ptr<TextOutputStream> HeadlessPlatform::CreateTextFile(const FolderItem& file) {
    if (failCreateTextFile) return nullptr;
    auto stream = Platform::CreateTextFile(file);
    if (stream && failWriteAfterBytes) return std::make_unique<FailingStream>(std::move(stream), *failWriteAfterBytes);
    return stream;
}

ScopedPlatform::ScopedPlatform(Platform& platform) : previous_(&GetPlatform()) { SetPlatform(&platform); }

ScopedPlatform::~ScopedPlatform() { SetPlatform(previous_); }

}  // namespace vornelt
