"""Makes the changes of a list one by one and tells what became of each; scripts/mutate.sh runs it.

mutation.py copy WORK COPY               the sources of this tree into WORK/COPY, where they differ
mutation.py reach WORK COPY              which functions each test reaches, as the tests of that copy tell it, in WORK/reach
mutation.py judge WORK COPIES LIST TOLD  makes the changes of LIST, as scripts/mutants.py tells them, in so many copies at a
                                         time, and adds a line to TOLD for each: what became of it, file, line, text of
                                         the line, what was changed and what took its place, with tabs between them

Of the tests those run that reach the function which is changed: the quickest of the folder's own program, all others of its,
then those of other programs but the window's; where none fails, all of the folder's own. A test that fails is enough. To be quick, of a source
nothing but itself is compiled, with the headers of its folder precompiled, and linked in front of the libraries. What becomes
of a change is one of noticed, survived, uncompiled, and same: nothing noticed it, and the optimised object is byte for byte
the one without the change, so that there is nothing to notice.
"""

import collections
import json
import os
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
import threading
import time

PROGRAMS = ['base', 'palette', 'sup', 'recipe', 'imaging', 'files', 'containers', 'render', 'authoring', 'cli', 'app']
# These start processes of their own, and only do in a program that has run nothing else.
ALONE = {'app': 'RecoveryAfterKill.*'}
FIRST_TESTS = 8
QUICK_TESTS = 30
# Bytes of address space: what takes more and more is noticed by that.
MEMORY = 8 << 30
# What does not end is noticed by the time it computes. What waits for ever is, too, after so many times that: where the
# machine has much else to do, what ends takes long as well.
WAITED = 10
# Tells what is read and written past the end of an array, as the sanitizers of ./test do.
CHECKED = ['-O0', '-D_GLIBCXX_ASSERTIONS']
# Those left out want macros before them or the brackets of extern "C" around.
HEADERS = re.compile(r'^#include ("[^"\n]+[.]h"|<(?:[a-z_]+|Q\w+|(?:nlohmann|CLI|ebml|matroska)/[^>]+)>)$', re.MULTILINE)


def build_of(copy):
    return os.path.join(copy, 'build', 'quick')


def program_of(copy, name):
    path = os.path.join(build_of(copy), 'tests', name, 'program', 'test_' + name)
    return path if os.path.exists(path) else os.path.join(build_of(copy), 'bin', 'test_' + name)


def build(copy, target):
    with open(os.path.join(copy, 'build', 'log'), 'w', encoding='utf-8') as log:
        return subprocess.run(['ninja', '-j2', '-C', build_of(copy), target], stdout=log, stderr=log, check=False,
                              env=dict(os.environ, CCACHE_READONLY='1')).returncode == 0


def run(copy, program, tests, seconds, reached=None):
    """Whether these tests of the program at the path pass, in so many seconds of computing; tests is a filter of
    GoogleTest."""
    folder = tempfile.mkdtemp(prefix='tests-', dir=copy)
    flags = os.path.join(folder, 'flags')
    with open(flags, 'w', encoding='utf-8') as file:
        file.write('--gtest_filter=' + tests + '\n--gtest_brief=1\n' + ('' if reached else '--gtest_fail_fast\n'))
    environment = dict(os.environ, QT_QPA_PLATFORM='offscreen', LANGUAGE='en', TMPDIR=folder, TEST_TMPDIR=folder + '/')
    if reached:
        environment['QUILLMARK_REACHED_FILE'] = reached
    elif not program.endswith('test_authoring'):  # programs of others, which do not end well with it
        # The same of a block of memory, and what is read before anything was written there.
        environment.update(LD_PRELOAD='libc_malloc_debug.so.0', MALLOC_CHECK_='3', MALLOC_PERTURB_='85')
    command = ['prlimit', f'--as={MEMORY}', '--core=0', f'--cpu={seconds:.0f}', program, '--gtest_flagfile=' + flags]
    with open(os.path.join(copy, 'build', 'test.log'), 'wb') as log:
        process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=log, stderr=log, env=environment, cwd=folder,
                                   start_new_session=True)
        try:
            isPassed = process.wait(WAITED * seconds) == 0
        except subprocess.TimeoutExpired:
            isPassed = False
        try:
            os.killpg(process.pid, 9)
        except ProcessLookupError:
            pass
        process.wait()
    subprocess.run(['chmod', '-R', 'u+rwX', folder], check=False, stderr=subprocess.DEVNULL)
    shutil.rmtree(folder, ignore_errors=True)
    return isPassed


def copy_sources(work, name):
    """Only what differs is written: what is newer than its object is compiled again."""
    copy = os.path.join(work, name)
    for path in subprocess.run(['git', 'ls-files', '-z'], capture_output=True, check=True).stdout.decode().split('\0')[:-1]:
        target = os.path.join(copy, path)
        with open(path, 'rb') as file:
            content = file.read()
        if os.path.exists(target):
            with open(target, 'rb') as file:
                if file.read() == content:
                    continue
        os.makedirs(os.path.dirname(target), exist_ok=True)
        with open(target, 'wb') as file:
            file.write(content)
        shutil.copymode(path, target)


def read_places(copy, name, offsets):
    """File and line of each function, and whether it is a lambda."""
    told = subprocess.run(['llvm-symbolizer-14', '--inlining=false', '--obj=' + program_of(copy, name)],
                          input='\n'.join('0x' + offset for offset in offsets) + '\n', capture_output=True, text=True,
                          check=True).stdout
    places = []
    for entry in told.split('\n\n')[:len(offsets)]:
        function, place = (entry.strip().split('\n') + ['', ''])[:2]
        path, line = re.match(r'(.*?):(\d+)', place).groups() if re.match(r'(.*?):(\d+)', place) else ('', '0')
        # Objects of the compiler's cache name the tree that they were compiled in first.
        path = '/'.join(os.path.normpath(path).split('/')[-2:])
        path = path if os.path.exists(os.path.join(copy, path)) else ''
        places.append([path, int(line), '$_' in function or 'lambda' in function])
    return places


def reach(work, name):
    copy = os.path.join(work, name)
    os.makedirs(os.path.join(work, 'reach'), exist_ok=True)
    for program in PROGRAMS:
        out = os.path.join(work, 'reach', program)
        stamp = os.stat(program_of(copy, program)).st_mtime
        if os.path.exists(out) and os.stat(out).st_mtime > stamp:
            continue
        raw = out + '.raw'
        run(copy, program_of(copy, program), '-' + ALONE.get(program, ''), 1200, raw)
        offsets, tests = [], {}
        with open(raw, encoding='utf-8') as file:
            for line in file:
                part = line.rstrip('\n').split('\t')
                if part[0] == 'F':
                    offsets.append(part[1])
                else:
                    tests[part[1]] = [int(part[2]), [int(number) for number in part[3].split()]]
        with open(out, 'w', encoding='utf-8') as file:
            json.dump({'functions': read_places(copy, program, offsets), 'tests': tests}, file)
        os.remove(raw)
        print(f'{program}: {len(tests)} tests, {sum(test[0] for test in tests.values()) / 1000:.0f} s', file=sys.stderr)


class Reach:
    """Which tests run when something of a line does."""

    def __init__(self, work):
        # program -> name of test -> milliseconds
        self.tests = {}
        # file -> line of function -> [is a lambda, program -> names of tests]
        self.functions = collections.defaultdict(dict)
        for program in PROGRAMS:
            with open(os.path.join(work, 'reach', program), encoding='utf-8') as file:
                told = json.load(file)
            self.tests[program] = {name: test[0] for name, test in told['tests'].items()}
            reaching = collections.defaultdict(set)
            for name, test in told['tests'].items():
                for number in test[1]:
                    reaching[number].add(name)
            for number, (path, line, isLambda) in enumerate(told['functions']):
                if path:
                    entry = self.functions[path].setdefault(line, [isLambda, collections.defaultdict(set)])
                    entry[1][program] |= reaching[number]

    def of(self, path, line):
        """Program -> names of tests: of the function that begins last before the line, and where that is a lambda of
        those before it up to one that is none."""
        found = collections.defaultdict(set)
        for start in sorted((start for start in self.functions[path] if start <= line), reverse=True):
            isLambda, tests = self.functions[path][start]
            for program, names in tests.items():
                found[program] |= names
            if not isLambda:
                break
        return {program: names for program, names in found.items() if names}


class Compiler:
    """Compiles one source of a copy, as its build does, without touching the build."""

    def __init__(self, copy):
        self.copy = copy
        self.folder = os.path.join(copy, 'build', 'mutant')
        os.makedirs(self.folder, exist_ok=True)
        told = subprocess.run(['ninja', '-C', build_of(copy), '-t', 'compdb'], capture_output=True, text=True, check=True).stdout
        self.commands = {}
        for entry in json.loads(told):
            if '-c' in entry['command'].split():
                self.commands[os.path.relpath(entry['file'], copy)] = entry['command']
        # folder -> precompiled header, or None where it has none
        self.precompiled = {}
        # program -> the command that links it
        self.links = {}

    def options(self, path):
        """The words of the command without what says what to read and write, and without the counts of Reached.cpp."""
        options = []
        words = iter(shlex.split(self.commands[path]))
        for word in words:
            if word in ('-o', '-MF', '-MT', '-c'):
                next(words)
            elif not re.match(r'-O|-g|-fsanitize-coverage|-MD', word) and not word.endswith('ccache'):
                options.append(word)
        return options + ['-w']

    def run(self, command):
        with open(os.path.join(self.copy, 'build', 'log'), 'w', encoding='utf-8') as log:
            return subprocess.run(command, cwd=build_of(self.copy), stdout=log, stderr=log, check=False).returncode == 0

    def headers_of(self, path):
        """All headers that sources of the folder include, parsed once: of the window most of the time goes there."""
        folder = path.split('/')[0]
        if folder not in self.precompiled:
            found = set()
            for source in os.listdir(os.path.join(self.copy, folder)):
                if source.endswith('.cpp') and folder + '/' + source in self.commands:
                    with open(os.path.join(self.copy, folder, source), encoding='utf-8') as file:
                        found |= set(HEADERS.findall(file.read()))
            header, out = (os.path.join(self.folder, folder + ending) for ending in ('.h', '.pch'))
            with open(header, 'w', encoding='utf-8') as file:
                file.write(''.join(f'#include {name}\n' for name in sorted(found)))
            isMade = self.run(self.options(path) + CHECKED + ['-x', 'c++-header', header, '-o', out])
            self.precompiled[folder] = ['-include-pch', out] if isMade else []
        return self.precompiled[folder]

    def compile(self, path, content, out, options):
        """Whether the object was made of the content in place of the file's."""
        source = os.path.join(self.folder, os.path.basename(path))
        with open(source, 'wb') as file:
            file.write(content)
        return self.run(self.options(path) + options + ['-c', source, '-o', out])

    def make(self, path, content, program):
        """The test program with the content in place of the file's, or None: the object stands in front of the library that
        has the file, which then gives nothing more."""
        changed = os.path.join(self.folder, 'changed.o')
        if not self.compile(path, content, changed, CHECKED + self.headers_of(path)):
            return None
        return self.link(program)

    def link(self, program):
        """The program, linked with what was compiled last; it has a folder of its own, as the window's has."""
        if program not in self.links:
            told = subprocess.run(['ninja', '-C', build_of(self.copy), '-t', 'commands', f'bin/test_{program}'],
                                  capture_output=True, text=True, check=True).stdout
            self.links[program] = re.search(r'^: && (.*?) && ', told.strip().split('\n')[-1]).group(1)
        words = shlex.split(self.links[program])
        out = os.path.join(self.folder, program, 'test_' + program)
        os.makedirs(os.path.dirname(out), exist_ok=True)
        at = words.index('-o')
        words[at:at + 2] = ['-o', out, os.path.join(self.folder, 'changed.o')]
        return out if self.run(words) else None

    def is_same(self, path, content):
        """Whether the optimised object is the same with the content and with the file's own."""
        with open(os.path.join(self.copy, path), 'rb') as file:
            whole = file.read()
        objects = []
        for text in (content, whole):
            out = os.path.join(self.folder, 'object.o')
            if not self.compile(path, text, out, ['-O1']):
                return False
            with open(out, 'rb') as file:
                objects.append(file.read())
        return objects[0] == objects[1]


class Judge:
    def __init__(self, work, reached):
        self.work = work
        self.reach = reached
        self.lock = threading.Lock()

    def passes(self, copy, program, path, names):
        """Whether these tests of the program at the path pass, the quickest of them first."""
        ordered = sorted(names, key=self.reach.tests[program].get)
        for part in (ordered[:FIRST_TESTS], ordered[FIRST_TESTS:QUICK_TESTS], ordered[QUICK_TESTS:]):
            seconds = 20 + 8 * sum(self.reach.tests[program][name] for name in part) / 1000
            if part and not run(copy, path, ':'.join(part), seconds):
                return False
        return True

    def state_quickly(self, compiler, path, content, reaching):
        """What becomes of it where the one source is compiled and nothing else, and the tests run that reach it."""
        duration = {program: sum(self.reach.tests[program][name] for name in names) for program, names in reaching.items()}
        own = path.split('/')[0]
        made = compiler.make(path, content, own)
        if made is None:
            return 'uncompiled'
        if not self.passes(compiler.copy, own, made, reaching.get(own, set())):
            return 'noticed'
        if compiler.is_same(path, content):
            return 'same'
        # The window's tests take minutes, and what is below it has its own.
        for program in sorted(duration.keys() - {own, 'app'}, key=duration.get):
            made = compiler.link(program)
            if made is not None and not self.passes(compiler.copy, program, made, reaching[program]):
                return 'noticed'
        return 'survived'

    def state(self, compiler, path, line, content):
        copy, own = compiler.copy, path.split('/')[0]
        reaching = self.reach.of(path, line)
        if path in compiler.commands and not path.endswith('/main.cpp'):
            state = self.state_quickly(compiler, path, content, reaching)
            if state != 'survived':
                return state
        # Everything is built as it is meant to be: what tests start are programs too.
        target = os.path.join(copy, path)
        whole = target + '.whole'
        shutil.copy(target, whole)
        with open(target, 'wb') as file:
            file.write(content)
        try:
            if not build(copy, 'test_' + own):
                return 'uncompiled'
            seconds = 60 + 8 * sum(self.reach.tests[own].values()) / 1000
            program = program_of(copy, own)
            if not self.passes(copy, own, program, reaching.get(own, set())):
                return 'noticed'
            if not run(copy, program, '-' + ':'.join([*reaching.get(own, set()), ALONE.get(own, '')]), seconds) or (
                    own in ALONE and not run(copy, program, ALONE[own], seconds)):
                return 'noticed'
            if path.endswith('.h'):
                for other, names in reaching.items():
                    if other not in (own, 'app') and (not build(copy, 'test_' + other)
                                         or not self.passes(copy, other, program_of(copy, other), names)):
                        return 'noticed'
            return 'survived'
        finally:
            # Newer than the object that was made of the change.
            shutil.copyfile(whole, target)
            os.remove(whole)
            if path.endswith('.h'):
                # Clang takes none that is older than what it was made of.
                compiler.precompiled.clear()

    def work_off(self, name, changes, told):
        compiler = Compiler(os.path.join(self.work, name))
        while True:
            with self.lock:
                if not changes:
                    return
                path, line, column, length, other = changes.pop(0)
            with open(os.path.join(compiler.copy, path), 'rb') as file:
                lines = file.read().split(b'\n')
            start, end, text = int(column), int(column) + int(length), lines[int(line) - 1]
            lines[int(line) - 1] = text[:start] + other.encode() + text[end:]
            began = time.monotonic()
            state = self.state(compiler, path, int(line), b'\n'.join(lines))
            with self.lock, open(told, 'a', encoding='utf-8') as file:
                file.write('\t'.join([state, path, line, text.decode().strip(), text[start:end].decode(), other,
                                      f'{time.monotonic() - began:.0f}', column, length]) + '\n')


def judge(work, copies, changesPath, told):
    with open(changesPath, encoding='utf-8') as file:
        changes = [line.rstrip('\n').split('\t') for line in file]
    judge_ = Judge(work, Reach(work))
    threads = [threading.Thread(target=judge_.work_off, args=(str(name), changes, told)) for name in range(1, int(copies) + 1)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()


{'copy': copy_sources, 'reach': reach, 'judge': judge}[sys.argv[1]](*sys.argv[2:])
