// Tests the tests of a program: seeds each fault of a list into a copy of one source, builds, runs the tests, and says
// which of them catches it. See README.md.
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import { spawn } from 'node:child_process';
import { fileURLToPath } from 'node:url';

const USAGE = `usage: seed-faults [--only WORD] [--seconds N] LIST.json SOURCE.mm...|LIBRARY.a... [-- CLANG-FLAG...]
LIST.json holds [{"fault", "file", "from", "to"}, ...], a fault that no test can catch also "missed": the reason.
The tests may take N seconds, otherwise 150; a good run takes a few.
Exit status: 0 nine of ten faults are caught and only those marked as missed are not, 1 otherwise,
2 it could not be tried, 3 what the run tool needs is not installed.`;
const BUILD_SECONDS = 400; // for all sources, without a cache
const LEAST_SHARE = 0.9; // of the faults, to be caught

const tool = path.dirname(fileURLToPath(import.meta.url));
const scratch = fs.mkdtempSync(path.join(os.tmpdir(), 'macos-check-faults.'));
process.on('exit', () => fs.rmSync(scratch, { recursive: true, force: true }));
for (const signal of ['SIGINT', 'SIGTERM']) process.on(signal, () => process.exit(130));

function giveUp(message, status = 2) {
    console.error('seed-faults: ' + message);
    process.exit(status);
}

function parseArguments(args) {
    const separator = args.indexOf('--');
    const flags = separator < 0 ? [] : args.slice(separator + 1);
    const names = separator < 0 ? args : args.slice(0, separator);
    const option = (name, otherwise) => (names[0] === name ? names.splice(0, 2)[1] : otherwise);
    const only = option('--only', '');
    const seconds = Number(option('--seconds', '150'));
    const [list, ...inputs] = names;
    if (!list || !inputs.length) giveUp(USAGE);
    const faults = JSON.parse(fs.readFileSync(list, 'utf8'));
    return { faults: faults.filter(({ fault }) => fault.includes(only)), seconds, inputs, flags };
}

/// { status, output } of one command
function runCommand(name, args, options = {}) {
    return new Promise((resolve) => {
        const child = spawn(name, args, { stdio: ['ignore', 'pipe', 'pipe'], ...options });
        let output = '';
        for (const stream of [child.stdout, child.stderr])
            stream.on('data', (data) => {
                output += data;
            });
        child.on('error', (error) => resolve({ status: 127, output: error.message }));
        child.on('close', (status) => resolve({ status: status ?? 128, output }));
    });
}

const build = (args) =>
    runCommand('timeout', [`${BUILD_SECONDS}`, path.join(tool, 'run'), ...args]);

/// The time limit stands inside, so that what xvfb-run has started ends with it. GNUstep's pasteboard server, which dies
/// with the display of the program that started it, is found through a file in TEMP.
const runTests = (program, home) =>
    runCommand(
        'xvfb-run',
        ['-a', 'timeout', '-k', '5', `${seconds}`, program, '--gtest_fail_fast'],
        { env: { ...process.env, HOME: home, TEMP: home } },
    );

/// What a run of the tests says: { passed }, { caughtBy } or neither when none of them began. What reads memory that a
/// fault has freed may fail, end the program or go on for ever.
function verdict({ status, output }) {
    if (status === 0) return { passed: /\[  PASSED  \] (\d+) tests?/.exec(output)?.[1] };
    const failed = /\[  FAILED  \] ([\w/]+\.[\w/]+)/.exec(output)?.[1];
    const place = /([^\s/]+:\d+): Failure/.exec(output)?.[1];
    if (failed) return { caughtBy: place ? `${failed} (${place})` : failed };
    const last = [...output.matchAll(/\[ RUN      \] (\S+)/g)].at(-1)?.[1];
    const isTimeOut = status === 124 || status === 137;
    return last ? { caughtBy: `${last}, which ${isTimeOut ? 'did not end' : 'ended the program'}` } : {};
}

const objectName = (source) => source.replaceAll('/', '_') + '.o'; // as `run -c` names it

/// Compiles and links the program with the fault in a copy of its source; an error's text, or null.
async function buildWith({ file, from, to }, program) {
    const text = fs.readFileSync(file, 'utf8');
    const places = text.split(from).length - 1;
    if (places !== 1) return `the text to replace stands ${places} times in ${file}`;
    const copy = path.join(path.dirname(program), path.basename(file));
    fs.writeFileSync(
        copy,
        text.replace(from, () => to),
    );
    const others = objects.filter((name) => path.basename(name) !== objectName(file));
    if (others.length === objects.length) return `${file} is not one of the sources`;
    const built = await build(['--gtest', program, copy, ...others, ...libraries, '--', ...flags]);
    return built.status === 0 ? null : `does not compile\n${built.output}`;
}

/// One line for the reader: { text, isCaught, isExpected }.
async function tryFault(entry, number) {
    const folder = path.join(scratch, `${number}`);
    const home = path.join(folder, 'home');
    fs.mkdirSync(home, { recursive: true });
    const program = path.join(folder, 'tests');
    const error = await buildWith(entry, program);
    const result = error ? {} : verdict(await runTests(program, home));
    fs.rmSync(folder, { recursive: true, force: true });
    if (error) return { text: error };
    if (result.caughtBy)
        return {
            text: `caught by ${result.caughtBy}${entry.missed ? ': remove "missed" from its entry' : ''}`,
            isCaught: true,
            isExpected: !entry.missed,
        };
    if (!result.passed) return { text: `the tests did not begin within ${seconds} s` };
    return {
        text: entry.missed ? `known to be missed, ${entry.missed}` : 'MISSED',
        isExpected: !!entry.missed,
    };
}

/// Runs `task` on every item, two at a time where there are two processors.
async function inPairs(items, task) {
    const queue = [...items.entries()];
    const worker = async () => {
        for (let next; (next = queue.shift()); ) await task(next[1], next[0]);
    };
    await Promise.all([worker(), ...(os.cpus().length > 1 ? [worker()] : [])]);
}

const { faults, seconds, inputs, flags } = parseArguments(process.argv.slice(2));
const sources = inputs.filter((name) => !name.endsWith('.a'));
const libraries = inputs.filter((name) => name.endsWith('.a'));
const objectFolder = path.join(scratch, 'objects');
const objects = sources.map((name) => path.join(objectFolder, objectName(name)));

const compiled = await build(['-c', objectFolder, ...sources, '--', ...flags]);
if (compiled.status === 2) giveUp(compiled.output, 3); // so says `run`
if (compiled.status !== 0) giveUp(`the sources do not compile\n${compiled.output}`);
const program = path.join(scratch, 'tests');
const linked = await build(['--gtest', program, ...objects, ...libraries, '--', ...flags]);
if (linked.status !== 0) giveUp(`the program does not link\n${linked.output}`);
fs.mkdirSync(path.join(scratch, 'home'));
const baseline = await runTests(program, path.join(scratch, 'home'));
const { passed } = verdict(baseline);
if (!passed) giveUp(`the tests fail without a fault\n${baseline.output}`);
console.log(`ok      without a fault ${passed} tests pass`);

let caught = 0;
let surprises = 0;
await inPairs(faults, async (entry, number) => {
    const { text, isCaught, isExpected } = await tryFault(entry, number);
    console.log(`${isExpected ? 'ok      ' : 'FAILED  '}${entry.fault}: ${text}`);
    if (isCaught) caught++;
    if (!isExpected) surprises++;
});
const isEnough = caught >= LEAST_SHARE * faults.length;
console.log(
    `seed-faults: ${caught} of ${faults.length} faults caught` +
        `${isEnough ? '' : ', which are too few'}, ${surprises} not as the list says`,
);
process.exit(isEnough && !surprises && faults.length ? 0 : 1);
