// Tests the tools of this folder: self-test [--no-run]. Exit status 0 when everything is as expected. See README.md.
//   1. the sample and the examples pass the type check;
//   2. each fault of sample/faults.json, seeded into the sample, is found, except those listed as missed;
//   3. each rule of lib/rules.mjs finds the bad sample of sample/rules.json and nothing in the good one, and `--prefix`
//      does what it says;
//   4. the tests of a small program catch one seeded fault of two;
//   5. the examples' GoogleTest programs, built with `run`, pass under Xvfb.
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import { spawnSync } from 'node:child_process';
import { fileURLToPath } from 'node:url';
import { ruleNames } from './lib/rules.mjs';

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

// ---- 3. the rules
const samples = JSON.parse(fs.readFileSync(path.join(here, 'sample/rules.json'), 'utf8'));
for (const name of ruleNames)
    expect(
        samples.some(({ rule }) => rule === name),
        `the rule "${name}" has a sample`,
    );
samples.forEach(({ good, bad }, i) => {
    fs.writeFileSync(path.join(scratch, `good${i}.mm`), good);
    fs.writeFileSync(path.join(scratch, `bad${i}.mm`), bad);
});
const ruled = tool(
    'typecheck',
    ['--no-cache', ...samples.flatMap((_, i) => [`good${i}.mm`, `bad${i}.mm`])],
    300,
    { cwd: scratch },
);
samples.forEach(({ rule, finds }, i) => {
    const found = (file) => ruled.stdout.split('\n').filter((line) => line.startsWith(file + ':'));
    expect(!found(`good${i}.mm`).length, `${rule}: the good sample passes`);
    const messages = found(`bad${i}.mm`);
    const isFound = messages.length === 1 && messages[0].includes(finds);
    expect(isFound, `${rule}: ${messages.join(', ') || 'NOT FOUND'}`);
});

const named = (name, category) => `#import <AppKit/AppKit.h>
@protocol ${name}Target;
@interface ${name} : NSObject
@end
@implementation ${name}
@end
@interface NSView (${category})
@end
`;
fs.writeFileSync(path.join(scratch, 'named.mm'), named('KSTThing', 'KSTParts'));
fs.writeFileSync(path.join(scratch, 'unnamed.mm'), named('Thing', 'Parts'));
const prefixed = tool('typecheck', ['--no-cache', '--prefix', 'KST', 'named.mm', 'unnamed.mm'], 300, {
    cwd: scratch,
});
const places = prefixed.stdout.match(/^\w+\.mm:\d+(?=: error: the (name|category) )/gm) ?? [];
expect(
    places.join(' ') === 'unnamed.mm:3 unnamed.mm:5 unnamed.mm:7',
    `names without the prefix are found: ${places.join(' ')}`,
);

// ---- 4. seeded faults
function expectSeeded(faults, status, words, options = []) {
    const list = path.join(scratch, 'faults.json');
    fs.writeFileSync(list, JSON.stringify(faults));
    const done = tool('seed-faults', [...options, list, 'half.mm', 'half_test.mm'], 600, { cwd: scratch });
    const text = done.stdout + done.stderr;
    const isRight = done.status === status && words.every((word) => text.includes(word));
    expect(isRight, `seed-faults: ${words.join('; ')}`);
    if (!isRight) console.log(text);
}
function expectFaultsAreJudged() {
    fs.writeFileSync(
        path.join(scratch, 'half.mm'),
        'int half(int n);\nint half(int n) { return n > 9 ? 9 : n / 2; }\n',
    );
    fs.writeFileSync(
        path.join(scratch, 'half_test.mm'),
        '#include <gtest/gtest.h>\nint half(int n);\nTEST(HalfTest, OfFour) { EXPECT_EQ(half(4), 2); }\n',
    );
    const fault = (from, to, missed) => ({ fault: `${from} is ${to}`, file: 'half.mm', from, to, missed });
    const caught = fault('n / 2', 'n / 3');
    expectSeeded([caught], 0, ['caught by HalfTest.OfFour (half_test.mm:3)', '1 of 1 faults caught']);
    expectSeeded([{ ...caught, missed: 'no test' }], 1, ['remove "missed"']);
    const endless = fault('return n > 9 ? 9 : n / 2;', 'for (;;) __asm__("");');
    expectSeeded([endless], 0, ['HalfTest.OfFour, which did not end'], ['--seconds', '30']);
    expectSeeded([caught, fault('n > 9', 'n > 8')], 1, ['MISSED', 'too few']);
    const many = Array(9).fill(caught);
    expectSeeded([...many, fault('n > 9', 'n > 8', 'no test')], 0, ['known to be missed, no test']);
    expectSeeded([...many, fault('n > 7', 'n > 8')], 1, ['stands 0 times']);
    expectSeeded([...many, fault('n > 9', 'm > 9')], 1, ['does not compile']);
}

// ---- 5. the examples run
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
    expectFaultsAreJudged();
    expectRuns('adapters_test', ['adapters.mm', 'adapters_test.mm', 'views_test.mm']);
    expectRuns('sample_test', ['sample_test.mm']);
    expectPasses('example/adapters_test.mm'); // `run` has installed GoogleTest
    expectPasses('example/sample_test.mm');
    expectPasses('example/views_test.mm');
}

console.log(failures ? `self-test: ${failures} failures` : 'self-test: everything as expected');
process.exit(failures ? 1 : 0);
