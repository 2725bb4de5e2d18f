// Tests the tools of this folder: self-test [--no-run]. Exit status 0 when everything is as expected. See README.md.
//   1. the sample and the examples pass the type check;
//   2. each fault of sample/faults.json, seeded into the sample, is found, except those listed as missed;
//   3. the examples' GoogleTest programs, built with `run`, pass under Xvfb.
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import { spawnSync } from 'node:child_process';
import { fileURLToPath } from 'node:url';

const here = path.dirname(fileURLToPath(import.meta.url));
const scratch = fs.mkdtempSync(path.join(os.tmpdir(), 'macos-check-test.'));
process.on('exit', () => fs.rmSync(scratch, { recursive: true, force: true }));
let failures = 0;
const expect = (holds, text) => {
    console.log(`${holds ? 'ok      ' : 'FAILED  '}${text}`);
    if (!holds) failures++;
};
const command = (name, args, seconds, options = {}) =>
    spawnSync(name, args, {
        encoding: 'utf8',
        timeout: seconds * 1000,
        killSignal: 'SIGKILL',
        maxBuffer: 1 << 28,
        ...options,
    });
const tool = (name, args, seconds, options) =>
    command(path.join(here, name), args, seconds, options);

// ---- 1. what is right passes
function expectPasses(file) {
    const done = tool('typecheck', [path.join(here, file)], 300);
    expect(done.status === 0, `${file} passes the type check`);
    if (done.status !== 0) console.log(done.stdout + done.stderr);
}
expectPasses('sample/shell.mm');
expectPasses('example/adapters.mm');

// ---- 2. what is wrong is found
const sample = fs.readFileSync(path.join(here, 'sample/shell.mm'), 'utf8');
const faults = JSON.parse(fs.readFileSync(path.join(here, 'sample/faults.json'), 'utf8')).map(
    (fault, i) => ({ ...fault, file: `fault${i}.mm` }),
);
for (const { fault, from, to, file } of faults) {
    if (!sample.includes(from)) expect(false, `${fault}: the sample lacks the text to replace`);
    fs.writeFileSync(
        path.join(scratch, file),
        sample.replace(from, () => to),
    );
}
const checked = tool('typecheck', ['--no-cache', ...faults.map(({ file }) => file)], 600, {
    cwd: scratch,
});
const firstMessage = (file) =>
    checked.stdout
        .split('\n')
        .find((line) => line.startsWith(file + ':'))
        ?.replace(/^\S+: error: /, '');
for (const { fault, file, missed } of faults) {
    const message = firstMessage(file);
    if (missed)
        expect(
            !message,
            message
                ? `${fault}: is found now, remove "missed" from its entry`
                : `${fault}: known to be missed, ${missed}`,
        );
    else expect(!!message, `${fault}: ${message ? message.slice(0, 110) : 'NOT FOUND'}`);
}

// ---- 3. the examples run
function expectRuns(name, sources) {
    const program = path.join(scratch, name);
    const built = tool(
        'run',
        ['--gtest', program, ...sources.map((source) => path.join(here, 'example', source))],
        600,
    );
    expect(built.status === 0, `${name} builds`);
    if (built.status !== 0) return console.log(built.stdout + built.stderr);
    const ran = command('xvfb-run', ['-a', '-s', '-screen 0 1280x800x24', program], 60, {
        env: { ...process.env, HOME: scratch, TEMP: scratch },
    });
    const passed = /\[  PASSED  \] (\d+ tests)/.exec(ran.stdout)?.[1];
    expect(ran.status === 0 && !!passed, `${name} runs: ${passed ?? ran.signal ?? ran.status}`);
    if (ran.status !== 0) console.log(ran.stdout + ran.stderr);
}
if (!process.argv.includes('--no-run')) {
    expectRuns('adapters_test', ['adapters.mm', 'adapters_test.mm', 'views_test.mm']);
    expectRuns('sample_test', ['sample_test.mm']);
    expectPasses('example/adapters_test.mm'); // `run` has installed GoogleTest
    expectPasses('example/sample_test.mm');
    expectPasses('example/views_test.mm');
}

console.log(failures ? `self-test: ${failures} failures` : 'self-test: everything as expected');
process.exit(failures ? 1 : 0);
