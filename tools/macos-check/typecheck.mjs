// Type-checks Objective-C++ sources of a macOS program on Linux. See README.md.
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import { spawn, spawnSync } from 'node:child_process';
import { cacheDir, filesUnder, generatedHeaders, root, sha256 } from './lib/cache.mjs';
import { namesWithout, ruleFindings, systemOptions } from './lib/rules.mjs';
import { systemTypes, typesOf } from './lib/undeclared-methods.mjs';

const USAGE = `usage: typecheck [-I DIR]... [-isystem DIR]... [-D NAME[=VALUE]]... [-W...]... [--no-cache] [--prefix WORD] FILE.mm...
Exit status: 0 nothing found, 1 findings, 2 the check could not be made.`;
const CLANG =
    process.env.MACOS_CHECK_CLANG ||
    ['clang++-14', 'clang++'].find((name) => spawnSync(name, ['--version']).status === 0);
const LANGUAGE = [
    '-x',
    'objective-c++',
    '-std=c++20',
    '-fobjc-runtime=macosx-13.0',
    '-fobjc-arc',
    '-fobjc-weak',
    '-fblocks',
    '-fsyntax-only',
];
const WARNINGS = [
    '-Wall',
    '-Wextra',
    '-Werror',
    '-Wundeclared-selector',
    '-Wselector',
    '-Wstrict-selector-match',
    '-Wshorten-64-to-32',
    '-Wobjc-literal-conversion',
    '-Wincomplete-implementation',
    '-Wprotocol',
    '-Wsuper-class-method-mismatch',
    '-Woverriding-method-mismatch',
    '-Wnullable-to-nonnull-conversion',
];
// BOOL is bool on a Mac with Apple silicon, signed char on one with an Intel processor
const VARIANTS = [
    { name: 'BOOL is bool', flags: [] },
    { name: 'BOOL is signed char', flags: ['-DMACOS_CHECK_BOOL_IS_CHAR'] },
];

function parseArguments(args) {
    const options = { flags: [], files: [], useCache: true, prefix: '' };
    for (let i = 0; i < args.length; i++) {
        const arg = args[i];
        if (arg === '-h' || arg === '--help') {
            console.log(USAGE);
            process.exit(0);
        } else if (arg === '--no-cache') options.useCache = false;
        else if (arg === '--prefix' && i + 1 < args.length) options.prefix = args[++i];
        else if (['-I', '-isystem', '-D'].includes(arg) && i + 1 < args.length)
            options.flags.push(arg, args[++i]);
        else if (/^-(I|isystem|D|W|std=)./.test(arg)) options.flags.push(arg);
        else if (arg.startsWith('-')) fail(`unknown option ${arg}\n${USAGE}`);
        else options.files.push(arg);
    }
    if (!options.files.length) fail(USAGE);
    for (const file of options.files) if (!fs.existsSync(file)) fail(`${file}: no such file`);
    return options;
}

function fail(message) {
    console.error('typecheck: ' + message);
    process.exit(2);
}

/// { status, output } of one command
function runCommand(name, args) {
    return new Promise((resolve) => {
        const child = spawn(name, args, { stdio: ['ignore', 'pipe', 'pipe'], timeout: 120000 });
        let output = '';
        child.stdout.on('data', (data) => {
            output += data;
        });
        child.stderr.on('data', (data) => {
            output += data;
        });
        child.on('error', (error) => resolve({ status: 127, output: error.message }));
        child.on('close', (status, signal) =>
            resolve({
                status: status ?? 128,
                output: signal ? `${output}${name} ended by ${signal}\n` : output,
            }),
        );
    });
}

/// Runs `task` on every item, as many at a time as there are processors.
async function inParallel(items, task) {
    const queue = [...items];
    await Promise.all(
        Array.from({ length: Math.max(1, os.cpus().length) }, async () => {
            for (let next; (next = queue.shift());) await task(next);
        }),
    );
}

/// The messages of a compiler's output: each with its source line and notes.
function messages(output) {
    const list = [];
    let inIncludes = false; // "In file included from" lines belong to the message after them
    for (const line of output.split('\n')) {
        const isInclude = line.startsWith('In file included from'),
            isMessage = /: (?:fatal )?(error|warning):/.test(line);
        if (/^\d+ (errors?|warnings?)( and .*)? generated\.$/.test(line)) continue;
        if (!list.length || (!inIncludes && (isInclude || isMessage))) list.push(line);
        else list[list.length - 1] += '\n' + line;
        inIncludes = isInclude;
    }
    return list.map((one) => one.trimEnd()).filter(Boolean);
}

/// The files that a rule of make names.
const dependencies = (rule) =>
    rule
        .replace(/\\\n/g, ' ')
        .replace(/^.*?: /s, '')
        .trim()
        .split(/(?<!\\)\s+/)
        .map((name) => name.replace(/\\(.)/g, '$1'));

const { flags, files, useCache, prefix } = parseArguments(process.argv.slice(2));
if (!CLANG) fail('clang is missing (Debian package: clang)');
let headers;
try {
    headers = generatedHeaders();
} catch (error) {
    fail(error.message);
}
const common = [
    ...LANGUAGE,
    ...WARNINGS,
    '-ferror-limit=100',
    '-isystem',
    path.join(root, 'headers'),
    '-isystem',
    headers,
    ...flags,
];
const ownHeaders = filesUnder(path.join(root, 'headers')).filter((name) => name.endsWith('.h'));
const toolHash = sha256(
    [
        spawnSync(CLANG, ['--version'], { encoding: 'utf8' }).stdout,
        process.cwd(),
        ...common,
        ...[...ownHeaders, path.join(root, 'typecheck.mjs')].map((name) => fs.readFileSync(name)),
    ].join('\n'),
);
const scratch = fs.mkdtempSync(path.join(os.tmpdir(), 'macos-check.'));
process.on('exit', () => fs.rmSync(scratch, { recursive: true, force: true }));

// A file that passed, and that nothing it includes has changed since, need not be compiled again.
const fileHash = (name) => {
    try {
        return sha256(fs.readFileSync(name));
    } catch {
        return 'gone';
    }
};
const resultFile = (file) =>
    path.join(cacheDir, 'passed', sha256(path.resolve(file) + toolHash) + '.json');
function passedBefore(file) {
    try {
        const { inputs } = JSON.parse(fs.readFileSync(resultFile(file), 'utf8'));
        return inputs.every(([name, hash]) => fileHash(name) === hash)
            ? inputs.map(([name]) => name)
            : null;
    } catch {
        return null;
    }
}

const jobs = files.map((file) => ({ file, inputs: useCache ? passedBefore(file) : null }));
const runs = jobs
    .filter((job) => !job.inputs)
    .flatMap((job) => VARIANTS.map((variant) => ({ job, variant })));
await inParallel(runs, async (run) => {
    const { job, variant } = run,
        rule = path.join(scratch, runs.indexOf(run) + '.d');
    const { status, output } = await runCommand(CLANG, [
        ...common,
        ...variant.flags,
        '-MMD',
        '-MF',
        rule,
        job.file,
    ]);
    run.status = status;
    run.messages = messages(output);
    try {
        job.found = dependencies(fs.readFileSync(rule, 'utf8'));
    } catch {
        /* a missing #include leaves no rule */
    }
});

let findings = 0;
for (const job of jobs) {
    const own = runs.filter((run) => run.job === job),
        seen = new Set();
    for (const { variant, messages: list, status } of own) {
        for (const message of list.length || !status
            ? list
            : [`${job.file}: error: the compiler failed with status ${status}`]) {
            const key =
                message
                    .split('\n')
                    .find((line) => /: (error|warning): /.test(line))
                    ?.replace(/BOOL.*/, '') ?? message;
            if (seen.has(key)) continue;
            seen.add(key);
            findings++;
            console.log(message + (variant === VARIANTS[0] ? '' : `\n  (where ${variant.name})`));
        }
    }
    if (own.length && own.every((run) => run.status === 0) && job.found) {
        fs.mkdirSync(path.dirname(resultFile(job.file)), { recursive: true });
        fs.writeFileSync(
            resultFile(job.file),
            JSON.stringify({
                inputs: job.found.map((name) => [path.resolve(name), fileHash(name)]),
            }),
        );
    }
}

const headerFiles = [
    ...fs.readdirSync(headers).map((name) => path.join(headers, name, name + '.h')),
    ...ownHeaders,
];
const system = systemTypes(headerFiles);
const options = systemOptions(headerFiles);
const findingsInText = new Set();
for (const job of jobs) {
    const inputs = new Set(
        [job.file, ...(job.inputs ?? job.found ?? [])]
            .map((name) => path.resolve(name))
            .filter((name) => fs.existsSync(name)),
    );
    const types = typesOf(system, inputs);
    const [source, ...included] = inputs;
    for (const message of [
        ...types.undeclared(),
        ...ruleFindings(options, types, source, included),
        ...(prefix ? namesWithout(prefix, [...inputs]) : []),
    ])
        findingsInText.add(message);
}
for (const message of findingsInText) {
    console.log(message);
    findings++;
}

const plural = (n, one) => `${n} ${one}${n === 1 ? '' : 's'}`;
console.error(
    `typecheck: ${plural(files.length, 'file')} (${plural(jobs.filter((job) => job.inputs).length, 'file')} unchanged since it passed), ${plural(findings, 'finding')}`,
);
process.exit(findings ? 1 : 0);
