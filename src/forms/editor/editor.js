// The document side of HtmlEditor: it owns the editable body, serialises it in the classic
// dialect the module's string contracts rely on, and pushes every author edit to C++.
//
// The classic editing control returned upper-case element names and attribute names as they
// were written; the code that renumbers links and activity placeholders searches for exactly
// those spellings ("<A href=\"page3.html\"", "QAndAStart.gif\">3<IMG"). The browser lower-cases
// attribute names and has its own serialiser, so this file serialises the DOM itself:
//   - element names upper-case, void elements without an end tag (<IMG ...>, <BR>);
//   - attribute names as first written in the HTML we were given (a pre-scan remembers them);
//   - every attribute value in double quotes: a bare value such as language=JavaScript comes
//     back as language="JavaScript", and border=0 as border="0";
//   - text escaped as the browser does (&amp; &lt; &gt; &nbsp;); script and style text raw;
//   - line breaks as CR LF, as the classic control wrote them: the HTML parser turns the CR LF
//     of a page file into LF, and a lone LF would break the script literal of a question.
(function () {
    'use strict';
    if (window.lumoraEditor) {
        return;
    }

    const VOID_ELEMENTS = new Set(['AREA', 'BASE', 'BASEFONT', 'BGSOUND', 'BR', 'COL', 'EMBED',
        'FRAME', 'HR', 'IMG', 'INPUT', 'KEYGEN', 'LINK', 'META', 'PARAM', 'SOURCE', 'TRACK', 'WBR']);
    const RAW_TEXT_ELEMENTS = new Set(['SCRIPT', 'STYLE', 'XMP', 'IFRAME', 'NOEMBED', 'NOFRAMES',
        'PLAINTEXT', 'NOSCRIPT']);
    const CONTROL_ELEMENTS = new Set(['IMG', 'TABLE']);
    const STATE_COMMANDS = /^(bold|italic|underline|strikethrough|subscript|superscript|insertorderedlist|insertunorderedlist|justifyleft|justifycenter|justifyright|justifyfull)$/i;
    const COLOR_COMMANDS = /^(forecolor|backcolor|hilitecolor)$/i;

    // ---- attribute spellings -------------------------------------------------------------
    // Keyed "tag attr" first (an onClick on links), then "attr" alone; the first spelling seen
    // wins. Attributes the browser adds itself have no entry and keep the DOM's spelling.
    let spellings = new Map();
    let bareAttributes = new Set(); // "tag attr" written without a value (<TD nowrap>)

    function learnSpellings(html) {
        const tagPattern = /<([A-Za-z][^\s\/>]*)((?:[^>"']|"[^"]*"|'[^']*')*)>/g;
        const attributePattern = /([^\s"'>\/=]+)(\s*=\s*(?:"[^"]*"|'[^']*'|[^\s"'>]+))?/g;
        let tag;
        let learned = false;
        while ((tag = tagPattern.exec(html)) !== null) {
            const tagName = tag[1].toLowerCase();
            let attribute;
            attributePattern.lastIndex = 0;
            while ((attribute = attributePattern.exec(tag[2])) !== null) {
                const written = attribute[1];
                const lower = written.toLowerCase();
                const key = tagName + ' ' + lower;
                if (!spellings.has(key)) {
                    spellings.set(key, written);
                    learned = true;
                }
                if (!spellings.has(lower)) {
                    spellings.set(lower, written);
                    learned = true;
                }
                if (attribute[2] === undefined && !bareAttributes.has(key)) {
                    bareAttributes.add(key);
                    learned = true;
                }
            }
        }
        if (learned) {
            // Blocks already serialised may hold attributes that are now spelt differently.
            blockCache = new WeakMap();
        }
    }

    function attributeName(tagName, domName) {
        return spellings.get(tagName + ' ' + domName) || spellings.get(domName) || domName;
    }

    // ---- serialiser ----------------------------------------------------------------------
    // Most text needs no escaping; testing first keeps a keystroke in a long page cheap.
    function escapeText(text) {
        if (!/[&<>\u00a0\n]/.test(text)) {
            return text;
        }
        return text.replace(/&/g, '&amp;').replace(/</g, '&lt;').replace(/>/g, '&gt;')
            .replace(/\u00a0/g, '&nbsp;').replace(/\r?\n/g, '\r\n');
    }

    function escapeAttribute(value) {
        if (!/[&"\u00a0\n]/.test(value)) {
            return value;
        }
        return value.replace(/&/g, '&amp;').replace(/"/g, '&quot;').replace(/\u00a0/g, '&nbsp;')
            .replace(/\r?\n/g, '\r\n');
    }

    function serializeElement(element) {
        const tag = element.tagName.toUpperCase();
        const tagName = tag.toLowerCase();
        let out = '<' + tag;
        for (const attribute of element.attributes) {
            const key = tagName + ' ' + attribute.name;
            out += ' ' + attributeName(tagName, attribute.name);
            if (!(attribute.value === '' && bareAttributes.has(key))) {
                out += '="' + escapeAttribute(attribute.value) + '"';
            }
        }
        out += '>';
        if (VOID_ELEMENTS.has(tag)) {
            return out;
        }
        const children = tag === 'TEMPLATE' ? element.content : element;
        return out + serializeChildren(children, RAW_TEXT_ELEMENTS.has(tag)) + '</' + tag + '>';
    }

    function serializeNode(node, rawText) {
        switch (node.nodeType) {
        case Node.ELEMENT_NODE:
            return serializeElement(node);
        case Node.TEXT_NODE:
            return rawText ? node.data.replace(/\r?\n/g, '\r\n') : escapeText(node.data);
        case Node.COMMENT_NODE:
            return '<!--' + node.data + '-->';
        case Node.DOCUMENT_FRAGMENT_NODE:
            return serializeChildren(node, false);
        default:
            return '';
        }
    }

    function serializeChildren(parent, rawText) {
        let out = '';
        for (let child = parent.firstChild; child; child = child.nextSibling) {
            out += serializeNode(child, rawText);
        }
        return out;
    }

    // The serialisation of each child of the body is kept until a mutation inside it, so a
    // keystroke in a long page serialises one paragraph, not the page. The records are taken
    // synchronously, so the cache is exact at every read.
    let blockCache = new WeakMap();
    const mutations = new MutationObserver(() => {});

    function forgetChangedBlocks() {
        const body = document.body;
        for (const record of mutations.takeRecords()) {
            if (record.target === body) {
                // A block put back (undo, paste) may have changed while it was detached.
                record.addedNodes.forEach(node => blockCache.delete(node));
                continue;
            }
            let block = record.target;
            while (block && block.parentNode !== body) {
                block = block.parentNode;
            }
            if (block) {
                blockCache.delete(block);
            }
        }
    }

    function bodyHTML() {
        forgetChangedBlocks();
        let out = '';
        for (let block = document.body.firstChild; block; block = block.nextSibling) {
            let html = blockCache.get(block);
            if (html === undefined) {
                html = serializeNode(block, false);
                blockCache.set(block, html);
            }
            out += html;
        }
        return out;
    }

    // ---- the channel to C++ --------------------------------------------------------------
    let bridge = null;
    let generation = 0;   // which setContent the document shows; C++ drops stale pushes
    let lastPushed = null; // the serialisation last known to C++ (the baseline after setBody)
    let applyingCommand = false;
    let inCommand = false; // a command called from C++ hands its content back itself

    function push() {
        if (inCommand) {
            return;
        }
        const html = bodyHTML();
        if (html === lastPushed) {
            return;
        }
        lastPushed = html;
        if (bridge) {
            bridge.contentChanged(generation, html);
        }
    }

    // ---- selection -----------------------------------------------------------------------
    function currentRange() {
        const selection = window.getSelection();
        if (!selection || selection.rangeCount === 0) {
            return null;
        }
        const range = selection.getRangeAt(0);
        return document.body.contains(range.commonAncestorContainer) ? range : null;
    }

    // An image or table selected whole: the classic control's "Control" selection.
    function controlElement(range) {
        if (!range || range.collapsed || range.startContainer !== range.endContainer ||
            range.startContainer.nodeType !== Node.ELEMENT_NODE ||
            range.endOffset - range.startOffset !== 1) {
            return null;
        }
        const node = range.startContainer.childNodes[range.startOffset];
        return node && node.nodeType === Node.ELEMENT_NODE && CONTROL_ELEMENTS.has(node.tagName)
            ? node : null;
    }

    function selectNode(node) {
        const range = document.createRange();
        range.selectNode(node);
        const selection = window.getSelection();
        selection.removeAllRanges();
        selection.addRange(range);
    }

    function rangeOrEndOfBody() {
        const range = currentRange();
        if (range) {
            return range;
        }
        const end = document.createRange();
        end.selectNodeContents(document.body);
        end.collapse(false);
        return end;
    }

    function colorNumberToHex(number) {
        const red = number & 0xff;
        const green = (number >> 8) & 0xff;
        const blue = (number >> 16) & 0xff;
        return '#' + [red, green, blue].map(c => c.toString(16).padStart(2, '0')).join('');
    }

    function colorToNumber(text) {
        const rgb = /rgba?\(\s*(\d+)\s*,\s*(\d+)\s*,\s*(\d+)/.exec(String(text));
        if (rgb) {
            return Number(rgb[1]) + 256 * Number(rgb[2]) + 65536 * Number(rgb[3]);
        }
        const hex = /^#([0-9a-f]{2})([0-9a-f]{2})([0-9a-f]{2})$/i.exec(String(text));
        if (hex) {
            return parseInt(hex[1], 16) + 256 * parseInt(hex[2], 16) + 65536 * parseInt(hex[3], 16);
        }
        return null;
    }

    // The classic "JustifyNone", which the browser lacks: the blocks the selection touches
    // lose their alignment, whether written as an attribute or as a style.
    function justifyNone() {
        const range = currentRange();
        if (!range) {
            return false;
        }
        let changed = false;
        for (const element of document.body.querySelectorAll('[align], [style]')) {
            if (!range.intersectsNode(element)) {
                continue;
            }
            if (element.hasAttribute('align')) {
                element.removeAttribute('align');
                changed = true;
            }
            if (element.style && element.style.textAlign) {
                element.style.removeProperty('text-align');
                if (!element.getAttribute('style')) {
                    element.removeAttribute('style');
                }
                changed = true;
            }
        }
        return changed;
    }

    // ---- values over the selection ---------------------------------------------------------
    // The classic control answered null for a font, size or colour that changes within the
    // selection; the browser answers for the selection's start. So the text nodes the selection
    // covers are asked one by one (blank stretches between blocks have no say).
    function selectedTextNodes(range) {
        const root = range.commonAncestorContainer;
        const candidates = [];
        if (root.nodeType === Node.TEXT_NODE) {
            candidates.push(root);
        } else {
            const walker = document.createTreeWalker(root, NodeFilter.SHOW_TEXT);
            for (let node = walker.nextNode(); node; node = walker.nextNode()) {
                if (range.intersectsNode(node)) {
                    candidates.push(node);
                }
            }
        }
        return candidates.filter(node => {
            const start = node === range.startContainer ? range.startOffset : 0;
            const end = node === range.endContainer ? range.endOffset : node.data.length;
            return end > start && /\S/.test(node.data.slice(start, end));
        });
    }

    // valueOf(element) for every covered text node's parent; null when they differ. A caret
    // (or a selection of blanks only) asks `atCaret` instead.
    function uniformValue(valueOf, atCaret) {
        const range = currentRange();
        const nodes = range && !range.collapsed ? selectedTextNodes(range) : [];
        if (nodes.length === 0) {
            return atCaret();
        }
        let value;
        const seen = new Map();
        for (const node of nodes) {
            const element = node.parentNode;
            let v = seen.get(element);
            if (v === undefined) {
                v = valueOf(element);
                seen.set(element, v);
            }
            if (value === undefined) {
                value = v;
            } else if (v !== value) {
                return null;
            }
        }
        return value === undefined ? null : value;
    }

    function firstFamily(list) {
        if (!list) {
            return null;
        }
        return list.split(',')[0].trim().replace(/^["']|["']$/g, '') || null;
    }

    // The legacy sizes 1-7 in pixels at the browser's medium size; a computed size maps to the
    // nearest, as the browser's own FontSize answer does.
    const LEGACY_SIZES = [10, 13, 16, 18, 24, 32, 48];
    function legacySize(pixels) {
        let best = 0;
        for (let i = 1; i < LEGACY_SIZES.length; i++) {
            if (Math.abs(LEGACY_SIZES[i] - pixels) < Math.abs(LEGACY_SIZES[best] - pixels)) {
                best = i;
            }
        }
        return best + 1;
    }

    const SELECTION_VALUES = {
        fontname: () => uniformValue(e => firstFamily(getComputedStyle(e).fontFamily),
            () => firstFamily(document.queryCommandValue('fontName'))),
        fontsize: () => uniformValue(e => legacySize(parseFloat(getComputedStyle(e).fontSize)),
            () => Number(document.queryCommandValue('fontSize')) || null),
        forecolor: () => uniformValue(e => colorToNumber(getComputedStyle(e).color),
            () => colorToNumber(document.queryCommandValue('foreColor'))),
    };

    // The face and colour written on the selection itself (a FONT element or a style between
    // the text and the body), not those it inherits from the stylesheet: what a link or term
    // put in the selection's place must carry again.
    function writtenOn(element, read) {
        for (let e = element; e && e !== document.body; e = e.parentElement) {
            const value = read(e);
            if (value) {
                return value;
            }
        }
        return null;
    }
    const writtenFace = element => writtenOn(element, e =>
        firstFamily((e.tagName === 'FONT' && e.getAttribute('face')) || e.style.fontFamily));
    const writtenColor = element => writtenOn(element, e =>
        colorToNumber((e.tagName === 'FONT' && e.getAttribute('color')) || e.style.color));
    function caretElement() {
        const range = currentRange();
        if (!range) {
            return document.body;
        }
        const node = range.startContainer;
        return node.nodeType === Node.ELEMENT_NODE ? node : node.parentElement;
    }

    function exec(command, argument) {
        try {
            return document.execCommand(command, false, argument === undefined ? null : argument);
        } catch (e) {
            return false;
        }
    }

    function setSelection(range) {
        const selection = window.getSelection();
        selection.removeAllRanges();
        selection.addRange(range);
    }

    // Moves the selection's ends into the first and last text it covers, so that content
    // pasted over it lands inside the formatting elements around that text.
    function narrowSelectionToText() {
        const range = currentRange();
        if (!range || range.collapsed || controlElement(range)) {
            return;
        }
        const nodes = selectedTextNodes(range);
        if (nodes.length === 0) {
            return;
        }
        const first = nodes[0];
        const last = nodes[nodes.length - 1];
        const narrowed = document.createRange();
        narrowed.setStart(first, first === range.startContainer ? range.startOffset : 0);
        narrowed.setEnd(last, last === range.endContainer ? range.endOffset : last.data.length);
        setSelection(narrowed);
    }

    // The content layer's stripOuterParagraph: no CR LF, one bare <p> off the start and one
    // </p> off the end.
    function stripOuterParagraph(html) {
        let text = html.replace(/\r\n/g, '');
        if (text.slice(0, 3).toLowerCase() === '<p>') {
            text = text.slice(3);
        }
        if (text.slice(-4).toLowerCase() === '</p>') {
            text = text.slice(0, -4);
        }
        return text;
    }

    // The content layer's linkTextOfSelection.
    function linkText(html) {
        const text = stripOuterParagraph(html);
        return text === '<P>&nbsp;</P>' || html.replace(/\r\n/g, '') === '<P>&nbsp;</P>' ? ''
                                                                                       : text;
    }

    // ---- the operations C++ and later dialogs call ---------------------------------------
    const editor = {
        // Shows new content. innerHTML never runs the scripts it creates.
        setBody(html, contentGeneration, reportsState) {
            generation = contentGeneration;
            reportState = reportsState === true;
            spellings = new Map();
            bareAttributes = new Set();
            blockCache = new WeakMap();
            learnSpellings(html);
            mutations.disconnect();
            document.body.innerHTML = html;
            mutations.observe(document.body,
                {childList: true, subtree: true, attributes: true, characterData: true});
            lastPushed = bodyHTML();
            lastState = null;
            scheduleStateUpdate(true);
            // Lay the page out now, while the author is still reading it, rather than at the
            // first keystroke.
            void document.body.getBoundingClientRect();
            return true;
        },

        bodyHTML,

        // Runs one editing command on the selection; errors of the command are swallowed as
        // the classic control's were. Colour commands also accept the platform's colour
        // number (0x00BBGGRR).
        execCommand(command, value) {
            let argument = value === undefined || value === null || value === '' ? null : value;
            if (COLOR_COMMANDS.test(command) && /^\d+$/.test(String(argument))) {
                argument = colorNumberToHex(Number(argument));
            }
            let done = false;
            applyingCommand = true;
            try {
                if (!currentRange()) {
                    document.body.focus();
                }
                done = /^justifynone$/i.test(command) ? justifyNone()
                                                      : document.execCommand(command, false, argument);
            } catch (e) {
                done = false;
            } finally {
                applyingCommand = false;
            }
            push();
            return done;
        },

        // True/false for the on/off commands, the platform's colour number for colours, the
        // font name without quotes, the legacy size (1-7) for FontSize; null where the browser
        // has no answer, and for a font, size or colour that differs within the selection.
        queryCommandValue(command) {
            try {
                if (STATE_COMMANDS.test(command)) {
                    return document.queryCommandState(command);
                }
                const mixedAware = SELECTION_VALUES[command.toLowerCase()];
                if (mixedAware) {
                    return mixedAware();
                }
                const value = document.queryCommandValue(command);
                return value === '' ? null : value;
            } catch (e) {
                return null;
            }
        },

        selectionType() {
            const range = currentRange();
            if (!range) {
                return 'None';
            }
            if (controlElement(range)) {
                return 'Control';
            }
            return range.collapsed ? 'None' : 'Text';
        },

        // "Text": the selected fragment, untrimmed; "Control": the element, trimmed; else "".
        selectionHTML() {
            const range = currentRange();
            if (!range || range.collapsed) {
                return '';
            }
            const control = controlElement(range);
            if (control) {
                return serializeElement(control).trim();
            }
            return serializeNode(range.cloneContents(), false);
        },

        // Puts HTML in place of the selection (at the end of the body when nothing is
        // selected) and leaves the caret after it. Parsed in a template, so no script runs.
        pasteHTML(html) {
            learnSpellings(html);
            // Changed with the selection let go: a live selection follows every change of the
            // document, each time at the cost of laying out the page.
            const range = rangeOrEndOfBody().cloneRange();
            window.getSelection().removeAllRanges();
            range.deleteContents();
            const template = document.createElement('template');
            template.innerHTML = html;
            const last = template.content.lastChild;
            range.insertNode(template.content);
            if (last) {
                range.setStartAfter(last);
                range.collapse(true);
                const selection = window.getSelection();
                selection.removeAllRanges();
                selection.addRange(range);
            }
            push();
        },

        // Removes what is selected (the classic selection's Clear).
        clearSelection() {
            const range = currentRange();
            if (!range || range.collapsed) {
                return;
            }
            range.deleteContents();
            push();
        },

        selectNode,
    };

    // ---- text ranges -----------------------------------------------------------------------
    // The classic control's text ranges, kept by name for the find dialog: a range over the
    // body, the selection, or the caret; copies; end point moves; text search with a
    // character count and the match-case (4) and whole-word (2) flags.
    const BLOCK_ELEMENTS = new Set(['P', 'DIV', 'LI', 'UL', 'OL', 'TD', 'TH', 'TR', 'TABLE',
        'H1', 'H2', 'H3', 'H4', 'H5', 'H6', 'BLOCKQUOTE', 'PRE', 'BR', 'HR', 'CENTER', 'DL',
        'DT', 'DD']);
    const ranges = new Map();

    // The body's text in document order: text nodes with their offsets in one string, and a
    // line break at every block boundary, so that no match runs from one paragraph into the
    // next. Search texts come from a one-line field and never match the breaks.
    function bodyText() {
        const pieces = [];
        let text = '';
        const walk = node => {
            for (let child = node.firstChild; child; child = child.nextSibling) {
                if (child.nodeType === Node.TEXT_NODE) {
                    pieces.push({node: child, start: text.length});
                    text += child.data;
                } else if (child.nodeType === Node.ELEMENT_NODE &&
                           !RAW_TEXT_ELEMENTS.has(child.tagName)) {
                    const block = BLOCK_ELEMENTS.has(child.tagName);
                    if (block) {
                        text += '\n';
                    }
                    walk(child);
                    if (block) {
                        text += '\n';
                    }
                }
            }
        };
        walk(document.body);
        return {text, pieces};
    }

    // The offset in bodyText of a range boundary point.
    function textOffset(body, container, offset) {
        const point = document.createRange();
        point.setStart(container, offset);
        for (const piece of body.pieces) {
            if (piece.node === container) {
                return piece.start + offset;
            }
            if (point.comparePoint(piece.node, 0) >= 0) {
                return piece.start;
            }
        }
        return body.text.length;
    }

    // The boundary point of an offset that lies in text (as every match's ends do).
    function textPoint(body, offset, preferEnd) {
        let found = null;
        for (const piece of body.pieces) {
            const end = piece.start + piece.node.data.length;
            if (offset >= piece.start && offset <= end) {
                found = {node: piece.node, offset: offset - piece.start};
                if (!(preferEnd && offset === piece.start) && !(!preferEnd && offset === end)) {
                    break;
                }
            }
        }
        return found;
    }

    const WORD_CHARACTER = /[\p{L}\p{N}_]/u;

    function isWholeWord(text, at, length) {
        const before = at > 0 ? text[at - 1] : '';
        const after = text[at + length] || '';
        return !WORD_CHARACTER.test(before) && !WORD_CHARACTER.test(after);
    }

    function namedRange(name) {
        const range = ranges.get(name);
        if (!range) {
            throw new Error('no text range named ' + name);
        }
        return range;
    }

    Object.assign(editor, {
        // kind: "body" (the whole document), "selection" (false when nothing is marked as
        // text) or "caret" (the collapsed caret, or the start of the body).
        rangeCreate(name, kind) {
            let range;
            if (kind === 'selection') {
                const current = currentRange();
                if (!current || current.collapsed || controlElement(current)) {
                    return false;
                }
                range = current.cloneRange();
            } else if (kind === 'caret') {
                const current = currentRange();
                range = document.createRange();
                if (current) {
                    range.setStart(current.startContainer, current.startOffset);
                } else {
                    range.setStart(document.body, 0);
                }
                range.collapse(true);
            } else {
                range = document.createRange();
                range.selectNodeContents(document.body);
            }
            ranges.set(name, range);
            return true;
        },

        rangeDuplicate(from, to) {
            ranges.set(to, namedRange(from).cloneRange());
        },

        rangeRelease(name) {
            ranges.delete(name);
        },

        // how: "StartToEnd" moves this range's start to the other's end, "EndToEnd",
        // "StartToStart" and "EndToStart" likewise.
        rangeSetEndPoint(name, how, otherName) {
            const range = namedRange(name);
            const other = namedRange(otherName);
            const fromEnd = /ToEnd$/.test(how);
            const container = fromEnd ? other.endContainer : other.startContainer;
            const offset = fromEnd ? other.endOffset : other.startOffset;
            if (/^Start/.test(how)) {
                range.setStart(container, offset);
            } else {
                range.setEnd(container, offset);
            }
        },

        rangeCollapse(name, toStart) {
            namedRange(name).collapse(toStart !== false);
        },

        // Searches the first `count` characters of the range; on a match the range covers it.
        rangeFindText(name, searchText, count, flags) {
            const range = namedRange(name);
            if (!searchText) {
                return false;
            }
            const body = bodyText();
            const start = textOffset(body, range.startContainer, range.startOffset);
            const end = Math.min(textOffset(body, range.endContainer, range.endOffset),
                start + Math.max(0, count));
            const matchCase = (flags & 4) !== 0;
            const wholeWord = (flags & 2) !== 0;
            const haystack = matchCase ? body.text : body.text.toLowerCase();
            const needle = matchCase ? searchText : searchText.toLowerCase();
            for (let at = haystack.indexOf(needle, start); at >= 0 && at + needle.length <= end;
                 at = haystack.indexOf(needle, at + 1)) {
                if (wholeWord && !isWholeWord(body.text, at, needle.length)) {
                    continue;
                }
                const first = textPoint(body, at, false);
                const last = textPoint(body, at + needle.length, true);
                if (!first || !last) {
                    continue;
                }
                range.setStart(first.node, first.offset);
                range.setEnd(last.node, last.offset);
                return true;
            }
            return false;
        },

        rangeSelect(name) {
            const selection = window.getSelection();
            selection.removeAllRanges();
            selection.addRange(namedRange(name).cloneRange());
        },

        rangeText(name) {
            return namedRange(name).toString();
        },

        // Replaces the range's content by plain text and pushes the change.
        rangeSetText(name, text) {
            const range = namedRange(name);
            range.deleteContents();
            const node = document.createTextNode(text);
            range.insertNode(node);
            range.selectNode(node);
            push();
        },
    });

    // ---- the editing commands ------------------------------------------------------------
    // What the main form's toolbars, Edit menu and dialogs do to the selection. C++ calls each
    // through command() below, one call per command however many steps it takes, so nothing
    // the author does can come between the steps.
    const FORMAT_WORDS = ['Bold', 'Italic', 'Underline'];

    // Whether an element that `matches` holds the selection or lies within it. Each editing
    // command lays the whole page out first; the ones that would find nothing to do are not
    // run.
    function selectionTouches(matches) {
        const range = currentRange();
        if (!range) {
            return false;
        }
        const around = node => {
            for (let e = node.nodeType === Node.ELEMENT_NODE ? node : node.parentElement;
                 e && e !== document.body; e = e.parentElement) {
                if (matches(e)) {
                    return true;
                }
            }
            return false;
        };
        if (around(range.startContainer) || around(range.endContainer)) {
            return true;
        }
        const root = range.commonAncestorContainer;
        if (root.nodeType !== Node.ELEMENT_NODE) {
            return false;
        }
        for (const e of root.getElementsByTagName('*')) {
            if (matches(e) && range.intersectsNode(e)) {
                return true;
            }
        }
        return false;
    }
    const isLink = e => e.tagName === 'A' && e.hasAttribute('href');
    const INLINE_FORMAT = new Set(['B', 'STRONG', 'I', 'EM', 'U', 'INS', 'FONT', 'SPAN', 'SUB',
        'SUP', 'S', 'STRIKE', 'DEL', 'BIG', 'SMALL', 'TT', 'CODE', 'KBD', 'SAMP', 'VAR', 'DFN',
        'ABBR', 'ACRONYM', 'CITE', 'Q', 'MARK']);
    const isFormatting = e => INLINE_FORMAT.has(e.tagName) || e.hasAttribute('style');

    // applyFormatState after its RemoveFormat.
    function reapplyFormatState(state) {
        for (const word of FORMAT_WORDS) {
            if (state.indexOf(word) >= 0) {
                exec(word);
            }
        }
        const face = state.indexOf('FontName');
        if (face >= 0) {
            const end = state.indexOf('-', face + 8);
            exec('fontName', state.slice(face + 8, end < 0 ? undefined : end));
        }
        const color = state.indexOf('ForeColor');
        if (color >= 0) {
            exec('foreColor', colorNumberToHex(parseInt(state.slice(color + 9), 10) || 0));
        }
    }

    // Puts HTML in place of the selection, replacing a selected image or table whole.
    function pasteReplacing(html) {
        if (editor.selectionType() === 'Control') {
            const range = currentRange();
            range.deleteContents();
            setSelection(range);
        }
        editor.pasteHTML(html);
        return true;
    }

    Object.assign(editor, {
        // The classic control's getSelectionHTML: "Text" gives the fragment untrimmed,
        // "Control" the element trimmed, "None" nothing.
        getSelectionHTML() {
            return editor.selectionHTML();
        },

        // The selection's HTML, and the selection removed (a selected image or table whole).
        cutSelectionHTML() {
            const html = editor.selectionHTML();
            const range = currentRange();
            if (range && !range.collapsed) {
                range.deleteContents();
            }
            return html;
        },

        // Puts HTML in place of the selection: a link is never put inside a link, so the
        // selection is unlinked first when the HTML holds one; a selected image or table is
        // replaced. True when something was inserted.
        insertHTMLAtSelection(html) {
            if (html.indexOf('href') >= 0 && selectionTouches(isLink)) {
                exec('unlink');
            }
            return pasteReplacing(html);
        },

        // Plain text in place of the selection; its line breaks become <BR>. Built as nodes
        // rather than typed, so a text of megabytes goes in at once. The selection is let go
        // while the nodes go in and put after them once the command has answered: a live
        // selection would make the engine lay out all of the new text before the command
        // returns.
        insertText(text) {
            const fragment = document.createDocumentFragment();
            text.split(/\r\n|\r|\n/).forEach((line, i) => {
                if (i > 0) {
                    fragment.appendChild(document.createElement('BR'));
                }
                if (line) {
                    fragment.appendChild(document.createTextNode(line));
                }
            });
            const range = rangeOrEndOfBody().cloneRange();
            window.getSelection().removeAllRanges();
            range.deleteContents();
            const last = fragment.lastChild;
            range.insertNode(fragment);
            if (last) {
                range.setStartAfter(last);
                range.collapse(true);
            }
            setTimeout(() => setSelection(range), 0);
        },

        execOnSelection(command, value) {
            return editor.execCommand(command, value);
        },

        // "t", then "Bold", "Italic", "Underline" for those set on the whole selection, then
        // "FontName" + face + "-" and "ForeColor" + colour number for a face and a colour
        // written on the selection (left out when none is, or when they differ within it).
        getFormatState() {
            let state = 't';
            for (const word of FORMAT_WORDS) {
                if (editor.queryCommandValue(word) === true) {
                    state += word;
                }
            }
            const face = uniformValue(writtenFace, () => writtenFace(caretElement()));
            if (face !== null) {
                state += 'FontName' + face + '-';
            }
            const color = uniformValue(writtenColor, () => writtenColor(caretElement()));
            if (color !== null && color !== 0) {
                state += 'ForeColor' + color;
            }
            return state;
        },

        applyFormatState(state) {
            exec('removeFormat');
            reapplyFormatState(state);
        },

        // Wraps the selection in open + text + close: the selection loses its links and its
        // formatting, its HTML becomes the text (emptyText when there is none), and the
        // formatting is put back around what replaces it. The hyperlink, page link and term
        // commands all work this way. True when something was inserted.
        wrapSelection(open, close, emptyText) {
            if (selectionTouches(isLink)) {
                exec('unlink');
            }
            const state = editor.getFormatState();
            if (selectionTouches(isFormatting)) {
                exec('removeFormat');
            }
            const text = linkText(editor.selectionHTML());
            // The formatting and the links are off already; neither is taken off again.
            reapplyFormatState(state);
            narrowSelectionToText();
            return pasteReplacing(
                open + (text === '' ? emptyText : stripOuterParagraph(text)) + close);
        },

        // Formatting, alignment and links off the selection (the warning is asked before).
        clearFormat() {
            exec('removeFormat');
            justifyNone();
            exec('unlink');
        },

        // The whole document reduced to its plain text, which is handed back for the
        // clipboard.
        clearToPlainText() {
            const text = document.body.innerText;
            document.body.innerText = text;
            return text;
        },

        setFontName(name) {
            return exec('fontName', name);
        },

        // One step of the size buttons: the selection's size, 2 when it is mixed, plus the
        // step; the browser keeps the result within 1-7.
        fontSizeStep(step) {
            const value = SELECTION_VALUES.fontsize();
            let size = value === null ? 2 : parseInt(value, 10);
            if (Number.isNaN(size)) {
                size = 2;
            }
            return exec('fontSize', String(((size << 16) >> 16) + step));
        },

        // What the font colour button needs before its colour dialog.
        fontColorState() {
            return {type: editor.selectionType(), color: SELECTION_VALUES.forecolor()};
        },

        // The block a spell check works on and the selection type it came from; the range is
        // kept for spellCheckPutBack.
        spellCheckBlock() {
            const type = editor.selectionType();
            const range = currentRange();
            if (type === 'None' || !range) {
                ranges.delete('$spell');
                return {type: 'None', text: bodyHTML()};
            }
            ranges.set('$spell', range.cloneRange());
            const control = controlElement(range);
            if (control) {
                return {type, text: serializeElement(control)};
            }
            // Cells marked across rows come inside their table body, as the classic control
            // handed them over; the spell check refuses such a block, which could not be put
            // back on its own.
            let text = serializeNode(range.cloneContents(), false);
            let section = range.commonAncestorContainer;
            if (section.nodeType === Node.ELEMENT_NODE && section.tagName === 'TR') {
                section = section.parentNode;
            }
            if (section.nodeType === Node.ELEMENT_NODE &&
                /^(TBODY|THEAD|TFOOT)$/.test(section.tagName)) {
                text = '<' + section.tagName + '>' + text + '</' + section.tagName + '>';
            }
            return {type, text};
        },

        spellCheckPutBack(type, html) {
            const range = ranges.get('$spell');
            ranges.delete('$spell');
            if (type === 'None' || !range) {
                learnSpellings(html);
                document.body.innerHTML = html;
                return;
            }
            setSelection(range);
            editor.insertHTMLAtSelection(html);
        },
    });

    // ---- find and replace ------------------------------------------------------------------
    // The find dialog's search: a range over the whole document, the range where the search
    // began (the marked text, the whole document, or the caret to the end), the range still
    // to be searched, and the last match, which Replace replaces.
    Object.assign(editor, {
        // True when text is marked: the search is then confined to it.
        findReset() {
            editor.rangeCreate('$find.whole', 'body');
            ranges.delete('$find.match');
            if (!editor.rangeCreate('$find.start', 'selection')) {
                return false;
            }
            editor.rangeDuplicate('$find.start', '$find.search');
            return true;
        },

        findResetFrom(beginning) {
            if (beginning) {
                editor.rangeDuplicate('$find.whole', '$find.start');
            } else {
                editor.rangeCreate('$find.start', 'caret');
                editor.rangeSetEndPoint('$find.start', 'EndToEnd', '$find.whole');
            }
            editor.rangeDuplicate('$find.start', '$find.search');
        },

        // The next match within `count` characters of the search range, selected; the search
        // goes on after it up to where the start range ends. `wholeDocument` first widens the
        // search to the whole document.
        findNext(text, count, flags, wholeDocument) {
            if (!ranges.has('$find.search')) {
                return false;
            }
            if (wholeDocument) {
                editor.rangeCreate('$find.whole', 'body');
                editor.rangeDuplicate('$find.whole', '$find.search');
            }
            if (!editor.rangeFindText('$find.search', text, count, flags)) {
                return false;
            }
            editor.rangeSelect('$find.search');
            editor.rangeDuplicate('$find.search', '$find.match');
            editor.rangeSetEndPoint('$find.search', 'StartToEnd', '$find.match');
            editor.rangeSetEndPoint('$find.search', 'EndToEnd', '$find.start');
            return true;
        },

        // Replaces the highlighted match, and only it: the selection must still be the last
        // match and its text the one searched for (in any case).
        findReplace(text, replacement) {
            const match = ranges.get('$find.match');
            const range = currentRange();
            if (!match || !range ||
                match.compareBoundaryPoints(Range.START_TO_START, range) !== 0 ||
                match.compareBoundaryPoints(Range.END_TO_END, range) !== 0 ||
                range.toString().toLowerCase() !== text.toLowerCase()) {
                return false;
            }
            ranges.set('$find.replace', range.cloneRange());
            editor.rangeSetText('$find.replace', replacement);
            ranges.delete('$find.replace');
            ranges.delete('$find.match');
            return true;
        },

        findEnd() {
            for (const name of ['$find.whole', '$find.start', '$find.search', '$find.match']) {
                ranges.delete(name);
            }
        },
    });

    // Runs one operation for C++ and hands back its result with the body HTML when the
    // operation changed it (null otherwise) and the content generation it applies to. C++
    // stores that HTML before anything else happens, so a command's result is in the module
    // the moment the command completes.
    editor.command = function (name, args) {
        let result = null;
        inCommand = true;
        try {
            const value = editor[name].apply(editor, args || []);
            result = value === undefined ? null : value;
        } catch (e) {
            result = null;
        } finally {
            inCommand = false;
        }
        const html = bodyHTML();
        const changed = html !== lastPushed;
        lastPushed = html;
        scheduleStateUpdate(true);
        return {result, generation, body: changed ? html : null};
    };

    window.lumoraEditor = editor;

    // ---- events --------------------------------------------------------------------------
    document.addEventListener('input', () => {
        if (!applyingCommand) {
            push();
        }
    }, true);

    // A click on an image, or on a table's frame, selects it whole, as the classic control
    // did, so that the commands see a "Control" selection.
    document.addEventListener('click', event => {
        const target = event.target;
        if (target && CONTROL_ELEMENTS.has(target.tagName) && document.body.contains(target)) {
            selectNode(target);
        }
    }, true);

    // A long plain text pasted with the browser's own paste would be inserted line by line,
    // taking minutes for megabytes; it goes in the way Paste Unformatted puts it.
    const LONG_PASTE = 64 * 1024;
    document.addEventListener('paste', event => {
        const data = event.clipboardData;
        if (!data || data.types.indexOf('text/html') >= 0) {
            return;
        }
        const text = data.getData('text/plain');
        if (text.length < LONG_PASTE) {
            return;
        }
        event.preventDefault();
        inCommand = true;
        try {
            editor.insertText(text);
        } finally {
            inCommand = false;
        }
        push();
    }, true);

    // Ctrl+Y redoes, as it does in the authors' other editors (the browser binds only
    // Ctrl+Shift+Z here).
    document.addEventListener('keydown', event => {
        if (event.ctrlKey && !event.shiftKey && !event.altKey && event.key.toLowerCase() === 'y') {
            event.preventDefault();
            document.execCommand('redo');
        }
    }, true);

    // ---- the formatting toolbar's state ----------------------------------------------------
    // Which on/off commands hold at the caret, sent when that changes: the toolbar shows Bold
    // pressed inside bold text. Worked out once per burst of selection changes, after the
    // keystroke's own push, and sent only when different.
    const WATCHED_STATES = ['Bold', 'Italic', 'Underline', 'Subscript', 'Superscript',
        'JustifyLeft', 'JustifyCenter', 'JustifyRight', 'InsertUnorderedList'];
    let stateTimer = 0;
    let lastState = null;
    let reportState = false; // only an editor with a toolbar asks for its state

    // Typing moves the caret within one text node, where nothing of the state can change;
    // that is most selection changes, and they cost nothing.
    let lastCaretNode = null;

    function sendState() {
        stateTimer = 0;
        if (!bridge) {
            return;
        }
        const range = currentRange();
        const caretNode = range && range.collapsed &&
            range.startContainer.nodeType === Node.TEXT_NODE ? range.startContainer : null;
        if (caretNode !== null && caretNode === lastCaretNode && !stateForced) {
            return;
        }
        lastCaretNode = caretNode;
        stateForced = false;
        const state = WATCHED_STATES.filter(command => {
            try {
                return range !== null && document.queryCommandState(command);
            } catch (e) {
                return false;
            }
        }).join(',');
        if (state !== lastState) {
            lastState = state;
            bridge.formatStateChanged(generation, state);
        }
    }

    let stateForced = false;
    // A command may change the state where the caret stands; new content starts afresh.
    function scheduleStateUpdate(force) {
        if (force === true) {
            stateForced = true;
        }
        if (reportState && !stateTimer) {
            stateTimer = setTimeout(sendState, 0);
        }
    }

    document.addEventListener('selectionchange', scheduleStateUpdate);

    function connect() {
        new QWebChannel(qt.webChannelTransport, channel => {
            bridge = channel.objects.lumoraBridge;
            bridge.shellReady(Number(document.documentElement.getAttribute('data-lumora-editor')));
        });
    }

    function whenBodyExists() {
        // Only the editor's own shell talks to C++; any other document the page may hold
        // (the initial blank one) stays silent.
        if (!document.documentElement.hasAttribute('data-lumora-editor')) {
            return;
        }
        document.execCommand('styleWithCSS', false, false);
        connect();
    }

    if (document.readyState === 'loading') {
        document.addEventListener('DOMContentLoaded', whenBodyExists);
    } else {
        whenBodyExists();
    }
})();
