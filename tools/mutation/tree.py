"""Compiles a mutated source and links the library anew, in a copy of the library's folder."""

import json
import re
import shlex
import shutil
import subprocess
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
BUILD = ROOT / "build/coverage"
OUTPUT = ROOT / "build/mutation"
SOURCES = ROOT / "src/plot2d"
LIBRARY = BUILD / "src/plot2d/libplot2d.so"
INSTRUMENTS = ("--coverage", "-fno-exceptions")
# As in the tests under the sanitizers, what has no defined result ends the process; traps need none of their libraries.
TRAPS = (
    "-D_GLIBCXX_ASSERTIONS", "-fsanitize=undefined,float-divide-by-zero,float-cast-overflow", "-fno-sanitize=vptr",
    "-fsanitize-undefined-trap-on-error",
)  # fmt: skip
MOC = "mocs_compilation.cpp"
INCLUDE = re.compile(r'^#include [<"](?:plot2d/)?(\w+\.h)[>"]', re.MULTILINE)
CONDITION = re.compile(r"^[ \t]*#[ \t]*if", re.MULTILINE)
LINE_MARKER = re.compile(r'# (\d+) "(.*?)"')
SYSTEM_INCLUDE = re.compile(r"^#include <(?:Q\w+|qwt_\w+\.h|[a-z_]+)>$", re.MULTILINE)


def source_files():
    """The names of the files that can be mutated."""
    return sorted(path.name for path in SOURCES.iterdir() if path.suffix in (".h", ".cpp"))


def included_by(text):
    """The names of the library's headers that a text includes, or those of others with the same names."""
    return set(INCLUDE.findall(text))


def including(header):
    """The library's files that include a header, also by way of another."""
    texts = {name: (SOURCES / name).read_text() for name in source_files()}
    found = {header}
    while True:
        more = {name for name, text in texts.items() if included_by(text) & found} - found
        if not more:
            return found - {header}
        found |= more


def compile_commands():
    """How the build compiles each source, without instruments."""
    commands = {}
    for entry in json.loads((BUILD / "compile_commands.json").read_text()):
        arguments = shlex.split(entry["command"])
        while not arguments[0].endswith(("++", "g++-12")):
            arguments.pop(0)
        commands[entry["file"]] = [a for a in arguments if a not in INSTRUMENTS]
    return commands


def compiled_lines(name, text):
    """The numbers of a file's lines that the build compiles, None for all; the preprocessor leaves out the others."""
    if not CONDITION.search(text):
        return None
    source = name if name.endswith(".cpp") else min(n for n in including(name) if n.endswith(".cpp"))
    command = compile_commands()[str(SOURCES / source)]
    command[command.index("-o") + 1] = "-"
    command += ["-E", "-fdirectives-only"]
    output = subprocess.run(command, cwd=BUILD, check=True, capture_output=True, text=True).stdout
    lines = set()
    file, number = "", 0
    for line in output.split("\n"):
        if marker := LINE_MARKER.match(line):
            file, number = Path(marker[2]).name, int(marker[1])
            continue
        if file == name and line.strip():
            lines.add(number)
        number += 1
    return lines


class CompilationError(Exception):
    """A mutant that is no program."""


class Commands:
    """The commands of the build: without instruments, and with a precompiled header of others' headers."""

    def __init__(self):
        self.compile = {file: words[:1] + list(TRAPS) + words[1:] for file, words in compile_commands().items()}
        self.link = self.link_of(LIBRARY.resolve())
        self.header = self._precompiled_header()

    @staticmethod
    def link_of(target):
        """The command that links a program or the library, to be run in the build's folder."""
        target = str(Path(target).relative_to(BUILD))
        output = subprocess.run(
            ["ninja", "-C", str(BUILD), "-t", "commands", "-s", target], check=True, capture_output=True, text=True
        ).stdout
        words = shlex.split([line for line in output.splitlines() if " -o " in line][-1])
        start = next(i for i, word in enumerate(words) if word.endswith("++"))
        words = words[start:]
        return [word for word in words[: words.index("&&")] if word not in INSTRUMENTS]

    def _precompiled_header(self):
        """Of headers of Qt, Qwt and the standard library alone, which no mutant changes."""
        includes = set()
        for name in source_files():
            includes.update(SYSTEM_INCLUDE.findall((SOURCES / name).read_text()))
        header = OUTPUT / "others.h"
        header.write_text("\n".join(sorted(includes)) + "\n")
        command = self.compile[str(SOURCES / "plotlook.cpp")]
        command = command[: command.index("-o")]
        subprocess.run(command + ["-x", "c++-header", str(header), "-o", f"{header}.gch"], check=True, cwd=BUILD)
        return header


class Tree:
    """A worker's copy of the library: its sources, its objects and the shared library."""

    def __init__(self, commands, number):
        self.commands = commands
        self.folder = OUTPUT / f"worker{number}"
        self.sources = self.folder / "src/plot2d"
        self.objects = self.folder / "objects"
        self.temporary = self.folder / "tmp"
        self.is_changed = True
        shutil.rmtree(self.folder, ignore_errors=True)
        shutil.copytree(SOURCES, self.sources)
        self.objects.mkdir()
        self.temporary.mkdir()

    def build(self):
        """Compiles everything as it is."""
        for name in source_files():
            if name.endswith(".cpp"):
                self._compile(name, self.objects)
        moc = str(BUILD / "src/plot2d/plot2d_autogen" / MOC)
        self._run(self._here(self.commands.compile[moc], moc, moc, self.objects / f"{MOC}.o"))
        self._link({})

    def copy_objects(self, other):
        """Takes what another tree has built."""
        shutil.copytree(other.objects, self.objects, dirs_exist_ok=True)
        self._link({})

    def _compile(self, name, folder):
        """The object of a source of the library."""
        output = folder / f"{name}.o"
        original = str(SOURCES / name)
        arguments = self._here(self.commands.compile[original], original, str(self.sources / name), output)
        self._run(arguments[:1] + ["-include", str(self.commands.header)] + arguments[1:])
        return output

    def _here(self, command, source, copy, output):
        command = [a.replace(f"-I{SOURCES}/..", f"-I{self.sources}/..") for a in command]
        command = [copy if a == source else a for a in command]
        command[command.index("-o") + 1] = str(output)
        return command

    @staticmethod
    def _run(command):
        done = subprocess.run(command, cwd=BUILD, capture_output=True, text=True, check=False, timeout=300)
        if done.returncode != 0:
            raise CompilationError(done.stderr)

    def _link(self, changed):
        command = list(self.commands.link)
        command[command.index("-o") + 1] = str(self.folder / "libplot2d.so.0")
        objects = [word for word in command if word.endswith(".cpp.o")]
        command = [word for word in command if not word.endswith(".cpp.o")]
        place = next(i for i, word in enumerate(command) if word.endswith(".so.0")) + 1
        names = [Path(word).name[: -len(".o")] for word in objects]
        # Those of moc come last, as their copies of inline functions are not mutated.
        names.sort(key=lambda name: name == MOC)
        own = [str(changed.get(name, self.objects / f"{name}.o")) for name in names]
        self.is_changed = True
        self._run(command[:place] + own + command[place:])
        self.is_changed = bool(changed)

    def change(self, mutant, source):
        """Puts a mutant into the sources."""
        (self.sources / mutant.file).write_text(mutant.applied_to(source))

    def link_unchanged(self):
        """Makes sure that the library is that without a mutant."""
        if self.is_changed:
            self._link({})

    def mutate(self, mutant):
        """Builds the library with a mutant that is in the sources."""
        names = {mutant.file} if mutant.file.endswith(".cpp") else including(mutant.file)
        changed = {}
        new = self.folder / "changed"
        new.mkdir(exist_ok=True)
        for name in sorted(name for name in names if name.endswith(".cpp")):
            changed[name] = self._compile(name, new)
        self._link(changed)

    def built_program(self, program, source):
        """A test program, built against the tree's headers, for mutants of what is inline."""
        output = self.folder / "programs" / Path(program).name
        if output.exists():
            return output
        output.parent.mkdir(exist_ok=True)
        command = self.commands.link_of(program)
        built = self.folder / "programs" / f"{source.name}.o"
        compile_command = self.commands.compile[str(source)]
        original = compile_command[compile_command.index("-o") + 1]
        self._run(self._here(compile_command, str(source), str(source), built))
        command = [str(built) if word == original else word for word in command]
        command[command.index("-o") + 1] = str(output)
        self._run(command)
        return output

    def restore(self, mutant, source):
        """Puts the original text back."""
        (self.sources / mutant.file).write_text(source)
        shutil.rmtree(self.folder / "programs", ignore_errors=True)
        for leftover in self.temporary.iterdir():
            if leftover.is_dir():
                shutil.rmtree(leftover, ignore_errors=True)
            else:
                leftover.unlink(missing_ok=True)
