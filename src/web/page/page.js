// The page of Vornelt: the main window, its small windows and What Changed, in a browser.
// Every click, key and drop goes to the window's own handler in the core (page.cpp runs it
// on the page's one desktop); afterwards the page reads the state of every window back and
// mirrors it, as the desktop application does. The option controls are made from the
// options table, the frame-rate question's rows from the frame-rate table: both come from
// the core. The page's platform (library.js) shows the dialogs, the progress and the
// downloads through the functions of `platform` below.
'use strict';

(function () {
  const $ = (id) => document.getElementById(id);
  const make = (tag, props, ...children) => {
    const e = document.createElement(tag);
    Object.assign(e, props || {});
    for (const c of children) e.append(c);
    return e;
  };
  // The platform's virtual key codes of the keys the entry fields test.
  const KEY_CODES = {
    ArrowLeft: 123, ArrowRight: 124, ArrowDown: 125, ArrowUp: 126,
    Delete: 117, Backspace: 51, Tab: 48, Return: 36, Enter: 76,
  };

  let core = null;     // the module
  let tables = null;   // the options, the rates, the file types
  let state = {};      // the windows as the core last left them

  // ---- calling the core ----

  function text(s) {
    const size = core.lengthBytesUTF8(s) + 1;
    const p = core._malloc(size);
    core.stringToUTF8(s, p, size);
    return p;
  }
  // An entry point that only reads: it never waits. Its answer is a text, or with `number`
  // a number.
  function read(name, ...args) {
    return readAs(true, name, ...args);
  }
  const number = (name, ...args) => readAs(false, name, ...args);
  function readAs(isText, name, ...args) {
    const strings = [];
    const cargs = args.map((a) => (typeof a === 'string' ? (strings.push(text(a)), strings[strings.length - 1]) : a));
    try {
      const answer = core['_' + name](...cargs);
      return isText ? core.UTF8ToString(answer) : answer;
    } finally {
      strings.forEach((p) => core._free(p));
    }
  }
  const readJson = (name, ...args) => JSON.parse(read(name, ...args));

  // The handlers run one at a time, in the order they came, as events wait on the desktop
  // while a handler runs.
  const waiting = [];
  let running = false;
  let failed = false;

  function handler(name, ...args) {
    return new Promise((resolve) => {
      waiting.push({ name, args, resolve });
      if (!running) next();
    });
  }
  // A handler whose answer the event needs at once (a key to swallow): null when it could not
  // be had at once.
  function handlerNow(name, ...args) {
    if (running) {
      handler(name, ...args);
      return null;
    }
    syncAnswer.name = null;
    handler(name, ...args);
    return syncAnswer.take(name);
  }
  // The answer of the last handler that returned at once (the promise's then comes later).
  const syncAnswer = {
    name: null, value: null,
    take(name) { return this.name === name ? this.value : null; },
  };

  function next() {
    if (failed) return;
    if (!waiting.length) {
      running = false;
      document.body.dataset.busy = '0';
      return;
    }
    running = true;
    document.body.dataset.busy = '1';
    const { name, args, resolve } = waiting.shift();
    const strings = [];
    const cargs = args.map((a) => (typeof a === 'string' ? (strings.push(text(a)), strings[strings.length - 1]) : a));
    const done = (value) => {
      strings.forEach((p) => core._free(p));
      syncAnswer.name = name;
      syncAnswer.value = value;
      mirror();
      resolve(value);
      next();
    };
    let result;
    try {
      result = core.webRun(core['_' + name], cargs);
    } catch (e) {
      fail(e);
      return;
    }
    if (result.pending) result.pending.then(done, fail);
    else done(result.value);
  }

  function fail(error) {
    failed = true;
    document.body.dataset.busy = '0';
    console.error(error);
    showDialog(messageBox('Vornelt stopped', String(error && error.message ? error.message : error), ['OK'], 0));
  }

  // ---- dialogs ----

  const dialogs = $('dialogs');
  const anyDialog = () => dialogs.childElementCount > 0;

  function showDialog(dialog) {
    dialogs.append(dialog);
    const focus = dialog.querySelector('.default, select, input, button');
    if (focus) focus.focus();
    return dialog;
  }
  function closeDialog(dialog) {
    dialog.remove();
  }

  // A message with buttons; each button settles `answer` with its index. Return takes the
  // default button; Escape the button named as the escape, if there is one.
  function messageBox(title, body, captions, defaultIndex, escapeIndex, answer, icon) {
    const buttons = make('div', { className: 'dialog-buttons' });
    const dialog = make('div', { className: 'dialog', role: 'dialog' },
      make('div', { className: 'dialog-title' }, title), body instanceof Node ? body : make('div', { className: 'message' },
        make('div', { className: 'icon', textContent: icon || '' }), make('div', { className: 'text', textContent: body })),
      buttons);
    dialog.setAttribute('aria-modal', 'true');
    captions.forEach((caption, i) => {
      if (caption === null) return;
      const b = make('button', { textContent: caption, name: 'answer' + i });
      if (i === defaultIndex) b.classList.add('default');
      b.addEventListener('click', () => { closeDialog(dialog); if (answer) answer(i); });
      buttons.append(b);
    });
    dialog.addEventListener('keydown', (e) => {
      if (e.key === 'Enter' && defaultIndex !== undefined && e.target.tagName !== 'BUTTON') {
        e.preventDefault();
        buttons.querySelector('.default').click();
      } else if (e.key === 'Escape' && escapeIndex !== undefined && escapeIndex !== null) {
        e.preventDefault();
        closeDialog(dialog);
        if (answer) answer(escapeIndex);
      }
    });
    return dialog;
  }

  // Line ends inside the system are carriage returns.
  const lines = (s) => s.replace(/\r/g, '\n');

  // While a dialog of the platform waits for the user, the handler that asked stands still.
  function asking(promise) {
    document.body.dataset.asking = '1';
    return promise.finally(() => { document.body.dataset.asking = '0'; });
  }

  const platform = {
    msgBox(message) {
      return asking(new Promise((resolve) => showDialog(messageBox('Vornelt', lines(message), ['OK'], 0, 0, () => resolve()))));
    },
    // Answers 0 for the action button, 1 for the alternate, 2 for cancel.
    messageDialog(request) {
      return asking(new Promise((resolve) => {
        const body = make('div', { className: 'message' },
          make('div', { className: 'icon', textContent: request.icon === 1 ? '\u26A0\uFE0F' : '\u2139\uFE0F' }),
          make('div', { className: 'text' }, make('strong', { textContent: lines(request.message) }),
            make('div', { className: 'explanation', textContent: lines(request.explanation) })));
        // As on the Mac: the alternate at the left, cancel and the action at the right.
        const captions = [request.action, request.alternate || null, request.cancel || null];
        const dialog = messageBox('Vornelt', body, captions, 0, request.cancel ? 2 : undefined, resolve);
        const buttons = dialog.querySelector('.dialog-buttons');
        const action = buttons.querySelector('[name=answer0]');
        const alternate = buttons.querySelector('[name=answer1]');
        const cancel = buttons.querySelector('[name=answer2]');
        if (alternate) alternate.classList.add('left'), buttons.prepend(alternate);
        if (cancel) buttons.insertBefore(cancel, action);
        showDialog(dialog);
      }));
    },
    // The file picked: a list is read into the page's memory; a movie is only named.
    openDialog(title, prompt, filter) {
      return asking(new Promise((resolve) => {
        const movie = filter === 'movie';
        const input = $('open-file');
        input.value = '';
        input.accept = (movie ? tables.movieExtensions : tables.listExtensions).split(';').join(',');
        let dialog = null;
        const finish = async (file) => {
          // Answered: what follows is the handler's work, not the user's.
          document.body.dataset.asking = '0';
          input.onchange = input.oncancel = null;
          if (dialog) closeDialog(dialog);
          if (!file) return resolve(null);
          if (movie) return resolve('/Movies/' + file.name.replace(/\//g, '_'));
          resolve(await keepFile('/Opened', file));
        };
        input.onchange = () => finish(input.files[0] || null);
        input.oncancel = () => finish(null);
        const choose = make('button', { textContent: 'Choose File...', className: 'default', name: 'choose' });
        choose.addEventListener('click', () => input.click());
        const target = make('div', { className: 'drop-target', textContent: 'or drop the file here' });
        target.addEventListener('dragover', (e) => e.preventDefault());
        target.addEventListener('drop', (e) => {
          e.preventDefault();
          if (e.dataTransfer.files.length) finish(e.dataTransfer.files[0]);
        });
        const body = make('div', { className: 'dialog-body open-box' }, make('div', { textContent: prompt }), choose, target);
        dialog = messageBox(title, body, ['Cancel'], undefined, 0, () => finish(null));
        showDialog(dialog);
        // The system's file dialog at once, where the browser lets the page open it.
        try {
          if (input.showPicker) input.showPicker();
          else input.click();
        } catch (e) {
          // Without a click of the user's own: the dialog's button opens it.
        }
      }));
    },
    // The name to save under; the file goes to the browser's downloads.
    saveDialog(title, prompt, name) {
      return asking(new Promise((resolve) => {
        const field = make('input', { type: 'text', className: 'save-name', value: name, name: 'name' });
        const body = make('div', { className: 'dialog-body' }, make('div', { textContent: prompt }), field);
        const dialog = messageBox(title, body, ['Cancel', 'Save'], 1, 0, (i) => {
          const chosen = field.value.replace(/[\/\\]/g, '_').trim();
          resolve(i === 1 && chosen ? chosen : null);
        });
        showDialog(dialog);
        field.focus();
        const point = name.lastIndexOf('.');
        field.setSelectionRange(0, point > 0 ? point : name.length);
      }));
    },
    download(name, bytes) {
      const url = URL.createObjectURL(new Blob([bytes], { type: 'application/octet-stream' }));
      const a = make('a', { href: url, download: name });
      document.body.append(a);
      a.click();
      a.remove();
      setTimeout(() => URL.revokeObjectURL(url), 60000);
    },
    // The browser paints and answers events, then the handler goes on.
    serve(wakeUp) {
      mirrorProgress(readJson('web_state'));
      setTimeout(wakeUp, 0);
    },
    showProgress(open) {
      progress.show(open);
    },
    setModified(modified) {
      $('modified').classList.toggle('on', modified);
    },
    beep() {
      const w = $('MainWindow');
      w.classList.remove('flash');
      void w.offsetWidth;
      w.classList.add('flash');
    },
    showURL(url) {
      window.open(url, '_blank', 'noopener');
    },
  };

  // A file of the user's, kept in the page's memory under a folder that holds it alone.
  async function keepFile(folder, file) {
    const bytes = new Uint8Array(await file.arrayBuffer());
    for (const name of core.FS.readdir(folder)) if (name !== '.' && name !== '..') core.FS.unlink(folder + '/' + name);
    const path = folder + '/' + file.name.replace(/\//g, '_');
    core.FS.writeFile(path, bytes);
    return path;
  }

  // ---- the progress window ----

  const progress = {
    dialog: null,
    show(open) {
      if (open && !this.dialog) {
        this.dialog = make('div', { className: 'dialog progress', id: 'ProgressBarWindow' },
          make('div', { className: 'dialog-title' }), make('div', { className: 'headline' }),
          make('div', { className: 'bar' }, make('div', { className: 'fill' })), make('div', { className: 'detail' }));
        dialogs.append(this.dialog);
      } else if (!open && this.dialog) {
        this.dialog.remove();
        this.dialog = null;
      }
    },
  };

  function mirrorProgress(s) {
    const p = s.progress;
    if (!p || !progress.dialog) return;
    const d = progress.dialog;
    d.querySelector('.dialog-title').textContent = p.title;
    d.querySelector('.headline').textContent = p.headline;
    d.querySelector('.detail').textContent = p.detail;
    // A bar without a maximum has no measure: it shows that work goes on.
    const bar = d.querySelector('.bar');
    bar.classList.toggle('indefinite', p.maximum <= 0);
    bar.firstChild.style.width = p.maximum > 0 ? Math.min(100, (100 * p.value) / p.maximum) + '%' : '';
  }

  // ---- the main window's controls, from the options table ----

  const controls = {};  // by control name: the element

  function buildControls() {
    const fields = $('fields');
    const side = $('side');
    const boxes = {};
    // The entry fields stand in the window's tab order, the rest in the table's.
    const texts = tables.options.filter((o) => o.kind === 'text').sort((a, b) => a.tab - b.tab);
    for (const o of [...tables.options.filter((o) => o.kind !== 'text'), ...texts]) {
      let element;
      if (o.kind === 'text') {
        element = make('input', { type: 'text', id: o.control, spellcheck: false, autocomplete: 'off', title: o.help });
        fields.insertBefore(make('label', { className: 'field' }, make('span', { textContent: o.caption }), element),
          $('BtnSelectMovie'));
        wireField(o.control, element);
      } else {
        if (!boxes[o.box]) {
          boxes[o.box] = make('fieldset', {}, make('legend', { textContent: o.box }));
          side.append(boxes[o.box]);
        }
        if (o.kind === 'switch') {
          element = make('input', { type: 'checkbox', id: o.control });
          const label = make('label', { className: 'check', title: o.help }, element, o.caption);
          boxes[o.box].append(label);
          element.addEventListener('click', () => handler('web_check', o.control, element.checked ? 1 : 0));
        } else {
          element = make('select', { id: o.control, title: o.help });
          o.rows.forEach((row) => element.append(make('option', { textContent: row })));
          boxes[o.box].append(element);
          element.addEventListener('change', () => handler('web_popup', o.control, element.selectedIndex));
        }
      }
      // Named as the converter names the option, so that a script can find it.
      element.dataset.option = o.name;
      if (o.offName) element.dataset.off = o.offName;
      if (o.kind === 'switch') element.dataset.default = o.on ? '1' : '0';
      if (o.kind === 'choice') element.dataset.choices = o.choices.join(' '), (element.dataset.default = o.defaultRow);
      controls[o.control] = element;
    }
    for (const name of ['BtnOpenEDL', 'BtnSaveEDL', 'BtnSelectMovie']) controls[name] = $(name);
  }

  // Characters counted as the core counts them, not in UTF-16 units.
  const chars = (s, units) => [...s.slice(0, units)].length;
  const units = (s, count) => [...s].slice(0, count).join('').length;

  function wireField(control, input) {
    input.addEventListener('keydown', (e) => {
      if (e.ctrlKey || e.metaKey || e.altKey || e.isComposing) return;
      const code = e.key === 'Enter' ? (e.location === 3 ? KEY_CODES.Enter : KEY_CODES.Return) : KEY_CODES[e.key] || -1;
      const key = e.key.length === 1 || [...e.key].length === 1 ? e.key : '';
      if (!key && code < 0) return;  // shift, a function key
      if (handlerNow('web_field_key', control, key, code) === 1) e.preventDefault();
    });
    input.addEventListener('input', () => {
      handler('web_field_text', control, input.value, chars(input.value, input.selectionStart));
    });
    // Pasted text passes no key filter: it loses the characters that no key of a one-line
    // field gives (line ends, tabs, the other control characters) and comes in capitals
    // through the field's change handling.
    input.addEventListener('paste', (e) => {
      e.preventDefault();
      const pasted = (e.clipboardData.getData('text/plain') || '').replace(/[\u0000-\u001f\u007f]/g, '');
      input.setRangeText(pasted, input.selectionStart, input.selectionEnd, 'end');
      input.dispatchEvent(new Event('input'));
    });
    input.addEventListener('drop', (e) => {
      if (e.dataTransfer.files.length) return;
      e.preventDefault();
      const dropped = (e.dataTransfer.getData('text/plain') || '').replace(/[\u0000-\u001f\u007f]/g, '');
      input.setRangeText(dropped, input.selectionStart, input.selectionEnd, 'end');
      input.dispatchEvent(new Event('input'));
    });
    input.addEventListener('focus', () => { number('web_focus', control); appliedFocus = control; });
    // Leaving the field, not the page: a dialog of the page or another window does not count.
    input.addEventListener('blur', () => {
      if (!document.hasFocus() || anyDialog() || input.disabled) return;
      handler('web_field_lost_focus', control);
    });
  }

  let appliedFocus = '';

  function mirror() {
    state = readJson('web_state');
    document.title = (state.modified ? '\u2022 ' : '') + state.title;
    $('Title').textContent = state.title;
    document.body.classList.toggle('wait', state.wait);
    for (const [name, c] of Object.entries(state.controls)) {
      const e = controls[name];
      if (!e) continue;
      e.disabled = !c.enabled;
      const label = e.closest('label');
      if (label) label.classList.toggle('disabled', !c.enabled);
      (label && e.type !== 'text' ? label : e).hidden = !c.visible;
      if ('value' in c) e.checked = c.value;
      if ('row' in c) e.selectedIndex = c.row;
      if ('text' in c) {
        // The limit stops typing; it never cuts what the field holds.
        e.maxLength = c.limit > 0 ? Math.max(c.limit, [...c.text].length) : 524288;
        if (e.value !== c.text) {
          e.value = c.text;
          if (document.activeElement === e) {
            const at = units(c.text, c.caret);
            e.setSelectionRange(at, at);
          }
        }
      }
    }
    for (const [name, value] of Object.entries(state.labels)) $(name).textContent = value;
    $('Canvas2').hidden = !state.cover;
    mirrorFrameRateWindow();
    mirrorAbout();
    mirrorProgress(state);
    list.update();
    whatChanged.update();
    if (state.focus !== appliedFocus) {
      appliedFocus = state.focus;
      const target = controls[state.focus];
      if (target && !target.disabled && !anyDialog()) target.focus();
    }
  }

  // ---- the frame-rate question ----

  let frameRateDialog = null;

  function mirrorFrameRateWindow() {
    const w = state.frameRate;
    if (frameRateDialog && (!w || frameRateDialog.instance !== w.instance)) {
      closeDialog(frameRateDialog);
      frameRateDialog = null;
    }
    if (!w) return;
    if (!frameRateDialog) {
      const dialog = $('frame-rate-template').content.firstElementChild.cloneNode(true);
      dialog.id = w.droped ? 'FrameRateWindowIfDroped' : 'FrameRateWindow';
      dialog.instance = w.instance;
      const droped = w.droped ? 1 : 0;
      const popup = dialog.querySelector('select');
      tables.rates.forEach((label) => popup.append(make('option', { textContent: label })));
      popup.addEventListener('change', () => handler('web_frame_rate_row', droped, popup.selectedIndex));
      const ok = () => handler('web_frame_rate_ok', droped);
      dialog.querySelector('[name=PushButton1]').addEventListener('click', ok);
      // Return answers with the row shown, as the default button does on the desktop.
      dialog.addEventListener('keydown', (e) => {
        if (e.key === 'Enter') {
          e.preventDefault();
          ok();
        }
      });
      dialog.querySelector('.close').addEventListener('click', () => handler('web_frame_rate_close', droped));
      frameRateDialog = dialog;
      showDialog(dialog);
      dialog.querySelector('[name=PushButton1]').focus();
    }
    frameRateDialog.querySelector('.title').textContent = w.title;
    frameRateDialog.querySelector('select').selectedIndex = w.row;
  }

  // ---- the about window ----

  let aboutDialog = null;

  function mirrorAbout() {
    const a = state.about;
    if (!a) {
      if (aboutDialog) closeDialog(aboutDialog), (aboutDialog = null);
      return;
    }
    if (!aboutDialog) {
      aboutDialog = $('about-template').content.firstElementChild.cloneNode(true);
      const link = aboutDialog.querySelector('.link');
      link.textContent = tables.webSite;
      aboutDialog.addEventListener('mousedown', (e) => {
        if (!link.contains(e.target)) handler('web_command', 'AboutWindow2');
      });
      link.addEventListener('mouseenter', () => handler('web_command', 'ST_www_MouseEnter'));
      link.addEventListener('mouseleave', () => { if (aboutDialog) handler('web_command', 'ST_www_MouseExit'); });
      link.addEventListener('mouseup', () => handler('web_command', 'ST_www_MouseUp'));
      showDialog(aboutDialog);
    }
    aboutDialog.querySelector('.version').textContent = a.version;
    aboutDialog.classList.toggle('finger', a.finger);
  }

  // ---- the text area: the list, a screenful of lines at a time ----

  const list = {
    area: $('EditField1'),
    lines: $('list-lines'),
    spacer: $('list-spacer'),
    mark: $('list-mark'),
    version: -1,
    count: 0,
    lineHeight: 16,
    first: -1,
    shownCount: 0,
    update() {
      if (state.list.version === this.version) return;
      this.version = state.list.version;
      this.count = state.list.lines;
      this.spacer.style.height = this.count * this.lineHeight + 'px';
      this.mark.style.display = 'none';
      this.first = -1;
      this.render();
    },
    render() {
      const overscan = 30;
      const first = Math.max(0, Math.floor(this.area.scrollTop / this.lineHeight) - overscan);
      const count = Math.ceil(this.area.clientHeight / this.lineHeight) + 2 * overscan;
      if (first === this.first && count === this.shownCount) return;
      this.first = first;
      this.shownCount = count;
      this.lines.textContent = read('web_lines', first, count);
      this.lines.style.top = first * this.lineHeight + 'px';
    },
    reveal(line) {
      const top = line * this.lineHeight;
      if (top < this.area.scrollTop || top + this.lineHeight > this.area.scrollTop + this.area.clientHeight)
        this.area.scrollTop = top - this.area.clientHeight / 3;
      this.mark.style.top = top + 'px';
      this.mark.style.display = 'block';
      this.render();
    },
  };
  list.area.addEventListener('scroll', () => list.render());
  window.addEventListener('resize', () => { list.first = -1; list.render(); whatChanged.render(); });

  // ---- dropping a list ----

  function wireDrop() {
    const targets = [$('EditField1'), $('Canvas2')];
    const hasFiles = (e) => e.dataTransfer && [...e.dataTransfer.types].includes('Files');
    let inside = 0;
    for (const t of targets) {
      t.addEventListener('dragenter', (e) => {
        if (!hasFiles(e)) return;
        e.preventDefault();
        if (inside++ === 0) handler('web_command', 'EditField1_DragEnter');
        t.classList.add('drop');
      });
      t.addEventListener('dragover', (e) => { if (hasFiles(e)) e.preventDefault(); });
      t.addEventListener('dragleave', () => {
        t.classList.remove('drop');
        if (--inside === 0) handler('web_command', 'EditField1_DragExit');
      });
      t.addEventListener('drop', async (e) => {
        e.preventDefault();
        t.classList.remove('drop');
        inside = 0;
        // Only the first file counts, and only a list; the others are dropped without a word.
        const file = e.dataTransfer.files[0];
        if (!file || !number('web_accepts_list', file.name)) return;
        await dropFile(file);
      });
    }
  }
  async function dropFile(file) {
    const path = await keepFile('/Dropped', file);
    return handler('web_drop', path);
  }

  // ---- What Changed ----

  const whatChanged = {
    panel: $('WhatChangedWindow'),
    items: $('WhatChangedItems'),
    rowsBox: $('items-rows'),
    spacer: $('items-spacer'),
    rowHeight: 20,
    version: -1,
    report: null,
    open: new Set(),  // the kinds shown open, by heading's first entry
    rows: [],         // {group} or {group, entry}
    texts: new Map(), // entry index: its line
    selected: -1,
    show() {
      this.panel.hidden = false;
      this.version = -1;
      this.update();
    },
    update() {
      if (this.panel.hidden || state.list.version === this.version) return;
      this.version = state.list.version;
      this.report = readJson('web_report');
      this.texts.clear();
      this.selected = -1;
      $('WhatChangedSummary').textContent = this.report.summary;
      $('WhatChangedAsRead').textContent = '';
      $('WhatChangedAsWritten').textContent = '';
      this.layout();
    },
    layout() {
      this.rows = [];
      this.report.groups.forEach((g, i) => {
        this.rows.push({ group: i });
        if (this.open.has(g.heading.replace(/ \(.*$/, ''))) for (let k = 0; k < g.count; ++k) this.rows.push({ group: i, entry: g.first + k });
      });
      this.spacer.style.height = this.rows.length * this.rowHeight + 'px';
      this.render();
    },
    render() {
      if (this.panel.hidden || !this.report) return;
      const first = Math.max(0, Math.floor(this.items.scrollTop / this.rowHeight) - 10);
      const last = Math.min(this.rows.length, first + Math.ceil(this.items.clientHeight / this.rowHeight) + 20);
      const wanted = [];
      for (let r = first; r < last; ++r) if (this.rows[r].entry !== undefined && !this.texts.has(this.rows[r].entry)) wanted.push(this.rows[r].entry);
      if (wanted.length) {
        const from = Math.min(...wanted);
        const to = Math.max(...wanted);
        readJson('web_report_items', from, to - from + 1).forEach((t, k) => this.texts.set(from + k, t));
      }
      this.rowsBox.style.top = first * this.rowHeight + 'px';
      this.rowsBox.replaceChildren(...this.rows.slice(first, last).map((row, k) => {
        const g = this.report.groups[row.group];
        const e = make('div', { className: 'item-row' });
        e.dataset.row = first + k;
        if (row.entry === undefined) {
          e.classList.add('group');
          e.classList.toggle('open', this.open.has(g.heading.replace(/ \(.*$/, '')));
          if (g.warning) e.classList.add('warning');
          e.textContent = g.heading;
        } else {
          e.textContent = this.texts.get(row.entry) || '';
          e.classList.toggle('selected', row.entry === this.selected);
        }
        return e;
      }));
    },
    click(rowIndex) {
      const row = this.rows[rowIndex];
      if (!row) return;
      if (row.entry === undefined) {
        const key = this.report.groups[row.group].heading.replace(/ \(.*$/, '');
        if (this.open.has(key)) this.open.delete(key);
        else this.open.add(key);
        this.layout();
        return;
      }
      this.selected = row.entry;
      const lines = readJson('web_report_select', row.entry);
      $('WhatChangedAsRead').textContent = lines.asRead || '';
      $('WhatChangedAsWritten').textContent = lines.asWritten || '';
      // The main list scrolls to the item's line.
      if (lines.line >= 0) list.reveal(lines.line);
      this.render();
    },
  };
  whatChanged.items.addEventListener('scroll', () => whatChanged.render());
  whatChanged.items.addEventListener('click', (e) => {
    const row = e.target.closest('.item-row');
    if (row) whatChanged.click(Number(row.dataset.row));
  });

  // ---- menus, buttons, keys ----

  function pageCommand(name) {
    switch (name) {
      case 'WhatChanged': whatChanged.show(); break;
      case 'CloseWhatChanged': whatChanged.panel.hidden = true; break;
      case 'Help':
        platform.msgBox('Vornelt works on one list at a time: open or drop an EDL, name its frame rate, ' +
          'choose the options, and save the new list. The manual comes with the desktop program.');
        break;
      case 'Quit': handler('web_quit'); break;
    }
  }

  function wireCommands() {
    document.addEventListener('click', (e) => {
      const b = e.target.closest('button[data-command], button[data-page]');
      document.querySelectorAll('.menu.open').forEach((m) => { if (!m.contains(e.target) || b) m.classList.remove('open'); });
      if (!b || b.disabled) return;
      if (b.dataset.command) handler('web_command', b.dataset.command);
      else pageCommand(b.dataset.page);
    });
    for (const title of document.querySelectorAll('.menu-title')) {
      title.addEventListener('click', () => {
        const menu = title.parentElement;
        const open = !menu.classList.contains('open');
        document.querySelectorAll('.menu.open').forEach((m) => m.classList.remove('open'));
        menu.classList.toggle('open', open);
      });
    }
    const mac = /Mac/.test(navigator.platform);
    const shortcuts = {};
    for (const b of document.querySelectorAll('[data-keys]')) {
      shortcuts[b.dataset.keys.toLowerCase()] = b;
      b.dataset.shortcut = mac ? b.dataset.keys.replace('Ctrl+', '\u2318').replace('Shift+', '\u21E7') : b.dataset.keys;
    }
    document.addEventListener('keydown', (e) => {
      if (!(e.ctrlKey || e.metaKey) || anyDialog()) return;
      const keys = 'ctrl+' + (e.shiftKey ? 'shift+' : '') + e.key.toLowerCase();
      const b = shortcuts[keys];
      if (!b) return;
      e.preventDefault();
      b.click();
    });
  }

  // Leaving the page with unsaved changes: the browser asks, in its own words.
  window.addEventListener('beforeunload', (e) => {
    if (!state.modified) return;
    e.preventDefault();
    e.returnValue = '';
  });

  // ---- the start ----

  async function start() {
    core = await VorneltCore({ page: platform });
    tables = readJson('web_tables');
    buildControls();
    wireCommands();
    wireDrop();
    const probe = make('span', { textContent: 'X' });
    list.lines.append(probe);
    list.lineHeight = probe.getBoundingClientRect().height || 16;
    document.documentElement.style.setProperty('--line-height', list.lineHeight + 'px');
    probe.remove();
    handler('web_start');
  }
  start().catch(fail);
})();
