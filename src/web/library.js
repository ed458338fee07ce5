// The page's side of the platform of the page (web_platform.cpp). The functions that wait for
// the user hand the page a promise and suspend the handler that called them until it settles;
// the page's script (Module.page) shows the dialogs and the progress.
mergeInto(LibraryManager.library, {
  $webString: function(text) {
    if (text === null || text === undefined) return 0;
    var size = lengthBytesUTF8(text) + 1;
    var p = _malloc(size);
    stringToUTF8(text, p, size);
    return p;
  },
  web_open_dialog__deps: ['$webString', 'malloc'],
  web_open_dialog: function(title, prompt, filter) {
    return Asyncify.handleAsync(async function() {
      return webString(await Module.page.openDialog(UTF8ToString(title), UTF8ToString(prompt), UTF8ToString(filter)));
    });
  },
  web_save_dialog__deps: ['$webString', 'malloc'],
  web_save_dialog: function(title, prompt, name) {
    return Asyncify.handleAsync(async function() {
      return webString(await Module.page.saveDialog(UTF8ToString(title), UTF8ToString(prompt), UTF8ToString(name)));
    });
  },
  web_msgbox: function(text) {
    return Asyncify.handleAsync(async function() {
      await Module.page.msgBox(UTF8ToString(text));
    });
  },
  web_message_dialog: function(request) {
    return Asyncify.handleAsync(async function() {
      return await Module.page.messageDialog(JSON.parse(UTF8ToString(request)));
    });
  },
  web_serve: function() {
    return Asyncify.handleSleep(function(wakeUp) {
      Module.page.serve(wakeUp);
    });
  },
  web_show_progress: function(open) {
    Module.page.showProgress(!!open);
  },
  web_set_modified: function(modified) {
    Module.page.setModified(!!modified);
  },
  web_download: function(name, bytes, size) {
    Module.page.download(UTF8ToString(name), HEAPU8.slice(bytes, bytes + size));
  },
  web_beep: function() {
    Module.page.beep();
  },
  web_show_url: function(url) {
    Module.page.showURL(UTF8ToString(url));
  },
});
