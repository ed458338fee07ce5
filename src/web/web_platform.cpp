#include "web/web_platform.hpp"

#include <emscripten.h>
#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "web/json.hpp"

// The page's side of the platform (library.js). Those that wait for the user suspend the
// handler that called them until the answer comes.
extern "C" {
char* web_open_dialog(const char* title, const char* prompt, const char* filter);  // malloc'd path, or null
char* web_save_dialog(const char* title, const char* prompt, const char* name);    // malloc'd name, or null
void web_msgbox(const char* text);
int web_message_dialog(const char* request);  // DialogButton
void web_serve();                             // the browser paints and answers events
void web_show_progress(int open);
void web_set_modified(int modified);
void web_download(const char* name, const char* bytes, size_t size);
void web_beep();
void web_show_url(const char* url);
}

namespace vornelt::web {

namespace {

std::string Take(char* text) {
    std::string s(text);
    std::free(text);
    return s;
}

// A list saved by the page: the bytes are kept until the stream closes, then handed to the
// browser as a download under the file's name. A file of that name stands in the downloads
// folder afterwards, so that the next Save goes to it without asking, as on the desktop.
class DownloadStream : public TextOutputStream {
public:
    explicit DownloadStream(const FolderItem& file) : file_(file) {}
    bool Write(std::string_view bytes, ErrorStatus*) override {
        bytes_ += bytes;
        return true;
    }
    bool Close(ErrorStatus*) override {
        web_download(file_.Name().c_str(), bytes_.data(), bytes_.size());
        bytes_.clear();
        bytes_.shrink_to_fit();
        if (FILE* f = std::fopen(file_.AbsolutePath().c_str(), "w")) std::fclose(f);
        return true;
    }
    bool Replaces() const noexcept override { return false; }

private:
    FolderItem file_;
    std::string bytes_;
};

}  // namespace

WebPlatform::WebPlatform() {
    for (const char* folder : {kOpenedFolder, kDroppedFolder, kDownloadsFolder, kMoviesFolder}) mkdir(folder, 0777);
}

FolderItemRef WebPlatform::ShowOpenDialog(const OpenDialogRequest& request) {
    char* path = web_open_dialog(request.Title.c_str(), request.PromptText.c_str(), request.Filter.c_str());
    if (!path) return std::nullopt;
    return FolderItem(Take(path));
}

FolderItemRef WebPlatform::ShowSaveDialog(const SaveDialogRequest& request) {
    char* name = web_save_dialog(request.Title.c_str(), request.PromptText.c_str(), request.SuggestedFileName.c_str());
    if (!name) return std::nullopt;
    return FolderItem(kDownloadsFolder).Child(Take(name));
}

void WebPlatform::MsgBox(std::string_view text) { web_msgbox(std::string(text).c_str()); }

DialogButton WebPlatform::ShowMessageDialog(const MessageDialogRequest& d) {
    Json json;
    json.Open('{');
    json.Key("icon").Number(d.Icon);
    json.Key("message").String(d.Message);
    json.Key("explanation").String(d.Explanation);
    json.Key("action").String(d.ActionCaption);
    json.Key("alternate").String(d.AlternateVisible ? d.AlternateCaption : std::string());
    json.Key("cancel").String(d.CancelVisible ? d.CancelCaption : std::string());
    json.Close('}');
    switch (web_message_dialog(json.Text().c_str())) {
        case 0: return DialogButton::Action;
        case 1: return DialogButton::Alternate;
        case 2: return DialogButton::Cancel;
        default: return DialogButton::None;
    }
}

void WebPlatform::Beep() { web_beep(); }

int WebPlatform::SetWindowModified(bool modified) {
    web_set_modified(modified ? 1 : 0);
    return 0;
}

void WebPlatform::Yield() {
    // Called once per row: most calls cost a count and a compare.
    if (++calls_ < kCallsPerClockCheck) return;
    calls_ = 0;
    if (emscripten_get_now() - lastServed_ < kServeIntervalMs) return;
    web_serve();
    Served();
}

void WebPlatform::Served() { lastServed_ = emscripten_get_now(); }

// The progress is shown as it stands whenever the browser is given time.
void WebPlatform::Redraw(std::string_view) {}

void WebPlatform::ShowProgressWindow() {
    web_show_progress(1);
    lastServed_ = emscripten_get_now();
}

void WebPlatform::CloseProgressWindow() { web_show_progress(0); }

std::unique_ptr<TextOutputStream> WebPlatform::CreateTextFile(const FolderItem& file, ErrorStatus*) {
    return std::make_unique<DownloadStream>(file);
}

void WebPlatform::ShowURL(std::string_view url) { web_show_url(std::string(url).c_str()); }

}  // namespace vornelt::web
