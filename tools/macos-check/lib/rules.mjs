// Mistakes that the compiler lets through and that show on a Mac only. Each rule reads the text of one function at a
// time and speaks up only where it is sure; sample/rules.json holds a good and a bad sample of each.
import fs from 'node:fs';
import path from 'node:path';
import { withoutComments } from './undeclared-methods.mjs';

/// The functions of a source: { text, line, className }, the class where it is a method of one. A function begins after
/// the end of the one before or where a method begins, so declarations before it belong to it.
function functionsOf(source) {
    const functions = [];
    let className = null,
        lines = [],
        first = 1;
    const finish = (next) => {
        if (lines.join('').trim()) functions.push({ text: lines.join('\n'), line: first, className });
        lines = [];
        first = next;
    };
    source.split('\n').forEach((line, i) => {
        if (/^[-+]\s*\(/.test(line)) finish(i + 1);
        className = /^@implementation\s+(\w+)/.exec(line)?.[1] ?? className;
        if (/^@end\b/.test(line)) className = null;
        lines.push(line);
        if (/^\}/.test(line)) finish(i + 2);
    });
    finish(0);
    return functions;
}

/// Assignments of a property and the messages that do the same: { receiver, index } of each.
const settings = (text, property) => {
    const setter = 'set' + property[0].toUpperCase() + property.slice(1);
    const pattern = new RegExp(
        `(?:\\[\\s*([\\w.>-]+)\\s+${setter}:|([\\w.>-]+)\\.${property}\\s*=(?!=))`,
        'g',
    );
    return [...text.matchAll(pattern)].map((match) => ({
        receiver: match[1] ?? match[2],
        index: match.index,
    }));
};

const setsToNo = (text, property) =>
    settings(text, property).some(({ index }) => /^[^;]*?(?:=|:)\s*(NO|false)\b/.test(text.slice(index)));

/// The class that a name is declared with, in the function or else in the file and its header; null when that is unclear.
function classOf(name, { text, className }, fileText) {
    if (name === 'self') return className;
    const declaration = new RegExp(`\\b(\\w+)(?:<[^;<>]*>)?\\s*\\*\\s*(?:const\\s+)?_?${name.replace(/^_/, '')}\\b`, 'g');
    for (const where of [text, fileText]) {
        const classes = new Set([...where.matchAll(declaration)].map((match) => match[1]));
        if (classes.size) return classes.size === 1 ? [...classes][0] : null;
    }
    return null;
}

// A rule gives [{ index, message }] for a function.
const RULES = {
    'key equivalent before its modifiers': ({ text }) =>
        settings(text, 'keyEquivalent').flatMap(({ receiver, index }) =>
            settings(text, 'keyEquivalentModifierMask').some(
                (mask) => mask.receiver === receiver && mask.index > index,
            )
                ? [
                      {
                          index,
                          message:
                              `the key equivalent of '${receiver}' is set before its modifiers: meanwhile it is a plain key, ` +
                              'and a plain Return makes a button the default one',
                      },
                  ]
                : [],
        ),

    'what assistive programs see of a control': (one, { fileText, types }) =>
        ['accessibilityElement', 'accessibilityLabel'].flatMap((property) =>
            settings(one.text, property).flatMap(({ receiver, index }) => {
                const name = classOf(receiver, one, fileText);
                const hasCell =
                    name && types.isKindOf(name, 'NSControl') && !types.isKindOf(name, 'NSTableView');
                const reachesCell = settings(one.text, property).some(
                    (other) => other.receiver === receiver + '.cell',
                );
                return hasCell && !reachesCell
                    ? [
                          {
                              index,
                              message: `'${property}' of the control '${receiver}' does not reach its cell, which assistive programs meet too`,
                          },
                      ]
                    : [];
            }),
        ),

    'attributed title without a font': ({ text }) =>
        /\[NSAttributedString alloc\]|\[NSMutableAttributedString alloc\]/.test(text) &&
        !/NSFontAttributeName/.test(text)
            ? settings(text, 'attributedTitle').map(({ index }) => ({
                  index,
                  message: 'an attributed title without NSFontAttributeName is drawn in 12 points of Helvetica',
              }))
            : [],

    'sheet that holds up termination': ({ text }, { fileText }) =>
        setsToNo(fileText, 'preventsApplicationTerminationWhenModal')
            ? []
            : [...text.matchAll(/\bbeginSheet:/g)].map(({ index }) => ({
                  index,
                  message: 'while the sheet is open nobody can quit: preventsApplicationTerminationWhenModal is on unless it is set to NO',
              })),

    'window that is released when it closes': ({ text }) =>
        setsToNo(text, 'releasedWhenClosed')
            ? []
            : [...text.matchAll(/\[\[(?:NSWindow|NSPanel) alloc\]\s*initWithContentRect:/g)].map(({ index }) => ({
                  index,
                  message: 'the window is released when it closes, once too often under ARC: set releasedWhenClosed to NO',
              })),

    'constant of another option set': ({ text }, { options }) => options.findings(text),
};

/// The option sets of the system's headers, which are plain integers to the compiler, and who takes which. (That it is
/// one set on both sides of a `|` the compiler checks itself.)
class Options {
    #setOf = new Map(); // constant -> set
    #taken = new Map(); // "piece:" of a selector or ".property" -> the types that are declared for it
    #sets;
    #mentions;

    constructor(headerTexts) {
        for (const text of headerTexts) this.#scan(text);
        this.#sets = new Set(this.#setOf.values());
        this.#mentions = new RegExp(`\\b(?:${[...this.#setOf.keys()].join('|')})\\b`);
    }

    #scan(text) {
        for (const [, set, members] of text.matchAll(/typedef \w+ (\w+); enum : \1 \{([^}]*)\}/g))
            for (const member of members.split(','))
                this.#setOf.set(/^\s*(\w+)/.exec(member)?.[1] ?? '', set);
        this.#setOf.delete('');
        this.#addDeclarations(text);
    }

    #add(key, type) {
        if (!this.#taken.has(key)) this.#taken.set(key, new Set());
        this.#taken.get(key).add(type.replace(/\bconst\b/g, '').trim());
    }

    #addDeclarations(text) {
        for (const [line] of text.matchAll(/^[-+]\s*\([^;{]*/gm))
            for (const [, piece, type] of line.matchAll(/(\w+):\s*\(([^()]*)\)/g)) this.#add(piece + ':', type);
        for (const [, type, name] of text.matchAll(/^\s*@property\s*(?:\([^)]*\)\s*)?([^;]*?)(\w+)\s*(?:__attribute__[^;]*)?;/gm)) {
            this.#add('.' + name, type);
            this.#add(`set${name[0].toUpperCase()}${name.slice(1)}:`, type);
        }
    }

    /// Learns what the project itself declares.
    add(projectText) {
        this.#addDeclarations(projectText);
    }

    findings(text) {
        if (!this.#mentions.test(text)) return [];
        const found = [];
        const expect = (key, types, constant, index) => {
            const set = this.#setOf.get(constant);
            const sets = [...(types ?? [])];
            if (!set || !sets.length || sets.includes(set)) return;
            if (sets.every((type) => this.#sets.has(type)))
                found.push({ index, message: `'${constant}' is of ${set}, ${key} takes ${sets.join(' or ')}` });
        };
        for (const match of text.matchAll(/\b(\w+:)\s*(\w+)(?=\s*[|\])\s])/g))
            expect(match[1], this.#taken.get(match[1]), match[2], match.index);
        for (const match of text.matchAll(/(\.\w+)\s*[|&=!]?=\s*(\w+)/g))
            expect(match[1], this.#taken.get(match[1]), match[2], match.index);
        for (const match of text.matchAll(/\b(\w+)\s+(?:const\s+)?\w+\s*=\s*(\w+)/g))
            if (this.#sets.has(match[1])) expect(match[1], [match[1]], match[2], match.index);
        return found;
    }
}

/// String literals become spaces of the same length: what they say is no code.
const withoutStrings = (text) =>
    text.replace(/"(?:[^"\\\n]|\\.)*"/g, (literal) => `"${' '.repeat(literal.length - 2)}"`);

/// What the rules need to know of the system: once for all files.
export const systemOptions = (headerFiles) =>
    new Options(headerFiles.map((file) => fs.readFileSync(file, 'utf8')));

/// One message for each mistake in `file`. `headers`: the project's own headers that it includes. `types` knows the
/// classes of both.
export function ruleFindings(options, types, file, headers) {
    const textOf = (name) => withoutStrings(withoutComments(fs.readFileSync(name, 'utf8')));
    const own = textOf(file);
    const stem = file.replace(/\.\w+$/, '');
    const paired = headers.filter((name) => name.replace(/\.\w+$/, '') === stem);
    options.add([own, ...headers.map(textOf)].join('\n'));
    const context = { fileText: [own, ...paired.map(textOf)].join('\n'), types, options };
    return functionsOf(own).flatMap((one) =>
        Object.values(RULES)
            .flatMap((rule) => rule(one, context))
            .map(({ index, message }) => {
                const line = one.line + one.text.slice(0, index).split('\n').length - 1;
                return `${path.relative('.', file) || file}:${line}: error: ${message}`;
            }),
    );
}

/// One message for each class, protocol and category of `files` that another program or the system could name alike.
export function namesWithout(prefix, files) {
    return files.flatMap((file) =>
        withoutComments(fs.readFileSync(file, 'utf8'))
            .split('\n')
            .flatMap((line, i) => {
                const match = /^@(interface|protocol|implementation)\s+(\w+)\s*(?:\(\s*(\w*)\s*\))?(?!.*;\s*$)/.exec(line);
                if (!match || match[2].startsWith(prefix) || match[3]?.startsWith(prefix)) return [];
                const [, , name, category] = match;
                const what = category ? `category '${category}' of ${name}` : `name '${name}'`;
                return [`${path.relative('.', file) || file}:${i + 1}: error: the ${what} does not begin with ${prefix}`];
            }),
    );
}

export const ruleNames = Object.keys(RULES);
