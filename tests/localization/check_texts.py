#!/usr/bin/env python3
"""Fails on a text of the program that has no Czech pair, and on pairs that could not work.

Texts are read out of the sources, so a new sentence is noticed without anybody listing it. Sentences are put
together from pieces while the program runs: a piece counts as known when it stands in a key.
"""

import json
import re
import sys
from pathlib import Path

TOKEN = re.compile(r"\{(\d+|app)\}")
PLACEHOLDER = re.compile(r"\{(\d+|app)(:text)?\}")
HOLE = "\0"  # where a figure or a name is put in
DEEPEST = 3

# Rooms whose texts are not for people, or never pass a translation.
SILENT = (
    "VarnetApp/Platform/",  # words of the desktop's protocols and of the system's errors
    "VarnetApp/Previews/",  # invented machines
    "VarnetApp/Diagnostics/",  # answers to switches, read by programs
    "VarnetApp/main.cpp",  # the same
    "VarnetApp/Components/Gallery/",  # samples for whoever draws components
    "VarnetApp/Components/Mascot/",
    "VarnetCore/Base/",
    "VarnetCore/Cloud/",  # what goes out is data
    "VarnetCore/Disk/DiskUsageIndex",  # statements for the database
    "VarnetCore/Disk/DiskIndex",
    "VarnetCore/Disk/StorageItemVisual",  # names of folders to recognise
    "VarnetCore/Flame/Lines/",  # roasts are English in every language
    "VarnetCore/Localization/",
    "VarnetCore/Battery/BatteryReading.cpp",  # names of the platform's fields
)

# Literals that look like a text and are none.
EXCEPTIONS = {
    # names, the same in both languages
    "Varnet", "Varnet?", "VARNET", "English", "Inter", "Conductor", "Codex", "Cursor", "Claude Code", "Gemini CLI",
    "OpenCode", "ChatGPT", "Claude Desktop", "Next.js", "Vite", "Astro", "Nuxt", "Uvicorn", "Rails", "Django",
    "Figma", "Development", "PNG (*.png)", "My-week-lightly-roasted.png", "PNG",
    " server",  # names what listens, behind the name of its program
    # file names and folders
    "Package.swift", "Cargo.toml", "Gemfile", "Library", "VarnetPreview", "Varnet-",
    # words of a protocol
    "Accept-Encoding",
    # a roast
    "Let me investigate this shit.", "Cabin crew, prepare for localhost.",
    # for whoever runs the program in a terminal, or builds it
    "varnet: it runs already, but does not answer.\n",
    "Each sheet has a kind of its own.", "each page has a kind of its own", "belongs to its list",
    "a page's model owns it", "no icon is called \"%s\"", "%s was made by an engine without a context",
}
# Keys of settings, formats of dates, names of icons, of types and of windows: not even words.
NO_TEXT = re.compile(
    r"""^(SU[A-Z]\w+ | [A-Z][a-z]+[A-Z]\w* | Mac\w*\d+,\d+ | [dMHmsy:.\ ,]+ | .*\b(SELECT|INSERT|UPDATE|DELETE|PRAGMA|
        CREATE|LIMIT|WHERE)\b.* | frame\ %s.* | \s*[dM]+\s[dMy\s,:Hm]* | ddd.* | [\ \t\\nr,]+ | worktree\ |
        Ctrl\+.* | ref:\ refs.* | next-server\ \(v)$""",
    re.VERBOSE | re.DOTALL,
)
# Words of thermal pressure; they reach the sentences as names of a state.
LEVELS = "nominal|fair|serious|critical"
# Where sentences are put together, and taken apart again.
BREAK = re.compile(rf"{HOLE}| · |\n|\b(?:{LEVELS})\b")
LITERAL = re.compile(r'"((?:[^"\\\n]|\\.)*)"')
ESCAPE = re.compile(r"\\(u[0-9a-fA-F]{4}|x[0-9a-fA-F]+|.)", re.DOTALL)

# Sentences as the program puts them together: where one template could take the words of another.
ASSEMBLED = {
    "24 processes · Partial readings": "24 procesů · neúplné údaje",
    "3 processes · read only": "3 procesy · jen ke čtení",
    "System process · read only · Partial readings": "Systémový proces · jen ke čtení · neúplné údaje",
    "storefront · Running 4h 12m": "storefront · běží 4h 12m",
    "No project identified · Running 12m": "Neznámý projekt · běží 12 min",
    "12 · CPU: 30s average, whole Mac": "12 · CPU: průměr za 30 s, celý Mac",
    "Updated 4s ago": "Aktualizováno před 4 s",
    "Updated 12m ago": "Aktualizováno před 12 min",
    "Updated —": "Aktualizováno —",
    "1 recognized tool": "1 rozpoznaný nástroj",
    "5 recognized tools": "5 rozpoznaných nástrojů",
    "3 local servers · 1 recognized tool. Quite the entourage.":
        "3 místní servery · 1 rozpoznaný nástroj. Slušný doprovod.",
    "A process uses 12% of your Mac’s CPU. One of the busiest right now.":
        "Nějaký proces bere 12% CPU celého Macu. Patří teď k nejvytíženějším.",
    "Codex exited 52m ago. The server is still running; it may still be in use.":
        "Codex: konec před 52 min. Server dál běží; možná ho ještě někdo používá.",
    "Vite may be forgotten": "Možná zapomenuto: Vite",
    "storefront is working overtime": "storefront jede přesčas",
    "Vite started again": "Vite opět běží",
    "Vite stopped": "Vite: zastaveno",
    "Open details for Vite may be forgotten": "Otevřít podrobnosti: Možná zapomenuto: Vite",
    "Selected processes: partial result": "Vybrané procesy: zčásti zastaveno",
    "3 of 4 reviewed processes exited.": "Skončilo prověřených procesů: 3 z 4.",
    "1 hr 5 min · 8.2 W": "1 h 5 min · 8.2 W",
    "Full in 1 hr 5 min": "Do plna: 1 h 5 min",
    "Full in 40 min": "Do plna: 40 min",
    "Charging · Low power mode": "Nabíjí se · úsporný režim",
    "2 hr 5 min measured · 80% to 45%": "Změřeno 2 h 5 min · 80% → 45%",
    "Under 1 min measured · 80% to —": "Změřeno méně než 1 min · 80% → —",
    "Today 10:00 – 12:30": "Dnes 10:00 – 12:30",
    "2 worktrees · Claude Code · Local folder": "2 pracovní stromy · Claude Code · Místní složka",
    "No uncommitted files found · 2 unpushed commits": "Všechny soubory jsou v commitech · 2 neodeslané commity",
    "Uncommitted or untracked files · 12 unpushed commits":
        "Jsou tu soubory mimo commity · 12 neodeslaných commitů",
    "No uncommitted files found · upstream not verified":
        "Všechny soubory jsou v commitech · vzdálená větev neověřena",
    "1 of 1 folder · 2 GB": "Vybráno 1 z 1 · 2 GB",
    "Moved 1 folder to Trash. Space is freed when you empty Trash. Reinstall dependencies before using that "
    "project again.":
        "Přesunuto do koše, složek: 1. Místo se uvolní až vysypáním koše. Než projekt znovu použijete, "
        "nainstalujte závislosti.",
    "1 moved; 2 skipped. a/build: Git protection could not be verified. Nothing was moved.\n"
    "b/dist: The folder could not be fully checked. Nothing was moved.":
        "Přesunuto: 1; přeskočeno: 2. a/build: Ochranu Gitem nešlo ověřit. Nic se nepřesunulo.\n"
        "b/dist: Složku nešlo úplně zkontrolovat. Nic se nepřesunulo.",
    "Last charge: 50% at 10:00. Highest: 80% at 08:00. Lowest: 20% at 09:00.":
        "Poslední nabití: 50% (10:00). Nejvyšší: 80% (08:00). Nejnižší: 20% (09:00).",
    # What nobody could translate stays.
    "": "",
    "4h 12m": "4h 12m",
    "Meridian Browser": "Meridian Browser",
}


def unescaped(text):
    plain = {"n": "\n", "t": "\t", "r": "\r", "0": "\0"}

    def one(match):
        found = match.group(1)
        return chr(int(found[1:], 16)) if found[0] in "ux" and len(found) > 1 else plain.get(found, found)

    return ESCAPE.sub(one, text)


def without_comments(source):
    """Literals are kept: an address in one holds two slashes."""
    pattern = re.compile(r'"(?:[^"\\\n]|\\.)*"|//[^\n]*|/\*.*?\*/', re.DOTALL)
    return pattern.sub(lambda m: m.group(0) if m.group(0).startswith('"') else " ", source)


def literals(path):
    """Every literal with its line; neighbours that the compiler joins are joined."""
    source = without_comments(path.read_text(encoding="utf-8"))
    source = "\n".join("" if line.lstrip().startswith("#") else line for line in source.split("\n"))
    # In a view neighbours are joined by a plus.
    joint = r"\s*(?:\+\s*)?" if path.suffix == ".qml" else r"\s*"
    run = re.compile(LITERAL.pattern + f"(?:{joint}{LITERAL.pattern})*")
    for match in run.finditer(source):
        parts = LITERAL.findall(match.group(0))
        line = source.count("\n", 0, match.start()) + 1
        before = source[max(0, match.start() - 40) : match.start()]
        yield line, (before, source[match.end() : match.end() + 12]), "".join(unescaped(part) for part in parts)


def holed(text):
    """Tokens of a key, of Qt and of fmt alike."""
    return re.sub(r"%\d|\{[^{}]*\}", HOLE, text)


def trimmed(text):
    return text.strip(HOLE + " .,:;()·")


def is_text(text):
    """A sentence, a word that begins one, or a piece of one; not a name of the code."""
    if text in EXCEPTIONS or NO_TEXT.match(text):
        return False
    if not re.search(r"[a-z]{2}", text) or re.search(r"[/_=<>]|://|^[-.:$]|\.\w+$", text.strip(". ")):
        return bool(re.search(r"[a-z] [a-z]", text)) and not re.search(r"[_=<>]", text)
    return bool(re.match(r"[A-Z][a-z]", text) or re.search(r"[A-Za-z’] [A-Za-z]|^ [a-z]{3,}| [a-z]{3,} $", text))


class Catalogue:
    def __init__(self, pairs):
        self.pairs = pairs
        self.shapes = {holed(key) for key in pairs}
        # What code puts around the holes: a key between them, in sentences and in parts between dots.
        self.pieces = {trimmed(piece) for shape in self.shapes for piece in re.split(BREAK, shape)}
        self.pieces |= {trimmed(shape) for shape in self.shapes}
        # A plural ending and a count are often added by themselves.
        self.pieces |= {re.sub(r"^\d+ ", "", piece) for piece in self.pieces}
        self.pieces |= {piece.removesuffix("s") for piece in self.pieces}
        self.templates = []
        for key, value in pairs.items():
            names = TOKEN.findall(key)
            if not names:
                continue
            used = {name for name, _ in PLACEHOLDER.findall(value)}
            stretches = re.split(r"\{(?:\d+|app)\}", key)
            if not any(letter.isalpha() for letter in max(stretches, key=len)):
                continue
            pattern = "^" + re.escape(stretches[0])
            for name, stretch in zip(names, stretches[1:]):
                pattern += ("(.*?)" if name in used else "([A-Za-z]*)") + re.escape(stretch)
            specific = sum(map(len, stretches))
            self.templates.append((-specific, pattern, re.compile(pattern + "$", re.DOTALL), names, value))
        self.templates.sort(key=lambda one: one[:2])

    def translated(self, text, depth=0):
        """The way the program does it."""
        if text in self.pairs:
            return self.pairs[text]
        if depth > DEEPEST:
            return text
        if re.fullmatch(r"\d+m", text):
            return text[:-1] + " min"
        for _, _, expression, names, value in self.templates:
            match = expression.fullmatch(text)
            if not match:
                continue

            def put(found, match=match, names=names):
                name, deeper = found.groups()
                captured = match.group(names.index(name) + 1) if name in names else found.group(0)
                return self.translated(captured, depth + 1) if deeper and captured else captured

            return PLACEHOLDER.sub(put, value)
        for separator in ("\n", " · "):
            if separator in text:
                return separator.join(self.translated(piece, depth + 1) for piece in text.split(separator))
        return text

    def knows_whole(self, text):
        return holed(text) in self.shapes or self.translated(text) != text

    def knows(self, text):
        """The text, or every piece of it that has a word: a sentence is put together from pieces."""
        pieces = [trimmed(piece) for piece in re.split(BREAK, holed(text))]
        return trimmed(holed(text)) in self.pieces or all(
            piece in self.pieces for piece in pieces if re.search(r"[A-Za-z]{2}", piece)
        )


def read_pairs(file, faults):
    def flat(items):
        seen = set()
        for key, value in items:
            if key in seen:
                faults.append(f"{file.name}: twice: {key!r}")
            seen.add(key)
            if not isinstance(value, str):
                faults.append(f"{file.name}: not a text: {key!r}")
        return {key: value for key, value in items if isinstance(value, str)}

    pairs = json.loads(file.read_text(encoding="utf-8"), object_pairs_hook=flat)
    for key, value in pairs.items():
        if not key.strip() or not value.strip():
            faults.append(f"{file.name}: empty: {key!r}")
        lacking = {name for name, _ in PLACEHOLDER.findall(value)} - set(TOKEN.findall(key))
        if lacking:
            faults.append(f"{file.name}: {sorted(lacking)} is not in the key: {key!r}")
        if re.search(r"[{}]", PLACEHOLDER.sub("", value)):
            faults.append(f"{file.name}: a brace is left over: {value!r}")
        if key.count("%1") != value.count("%1"):
            faults.append(f"{file.name}: %1 is lost: {key!r}")
        # A figure that is put in stays; one that is part of the sentence is part of the Czech one.
        if sorted(re.findall(r"\d+", TOKEN.sub("", key))) != sorted(re.findall(r"\d+", PLACEHOLDER.sub("", value))):
            faults.append(f"{file.name}: other figures: {key!r}")
        if key[-1] in "…?" and value[-1] != key[-1]:
            faults.append(f"{file.name}: ends otherwise: {key!r}")
    return pairs


def roast_lines(root):
    for path in sorted((root / "VarnetCore/Flame/Lines").glob("*.cpp")):
        for _, _, text in literals(path):
            yield from (line.replace("{app}", "Meridian Browser") for line in text.split("\n") if line)


def main():
    root = Path(__file__).resolve().parents[2]
    faults = []
    catalogue = Catalogue(read_pairs(root / "VarnetApp/Localization/languages/cs.json", faults))

    spoken = []
    files = [p for room in ("VarnetApp", "VarnetCore") for p in sorted((root / room).rglob("*"))]
    for path in files:
        name = path.relative_to(root).as_posix()
        if path.suffix not in (".qml", ".cpp", ".h") or name.startswith(SILENT):
            continue
        for line, around, text in literals(path):
            spoken.append(holed(text))
            before, behind = around
            # What is handed over for translation must be known, whatever it looks like: whole, unless more is
            # added to it.
            handed = re.search(r"(?:Words|[lL]ocalization_?|language_)\.text\(\s*$", before)
            if handed and re.search(r"[A-Za-z]", text) and text not in EXCEPTIONS:
                whole = behind.lstrip().startswith(")")
                known = catalogue.knows_whole(text) if whole else catalogue.knows(text)
            else:
                named = re.search(r"(objectName|console\.\w+\(|qWarning\(|qmlRegister\w+\().{0,12}$", before)
                known = named or not is_text(text) or catalogue.knows(text)
            if not known:
                faults.append(f"{name}:{line}: no pair: {text!r}")

    # A pair for a sentence that the program no longer says, or never said in these words.
    everything = "\n".join(spoken)
    for key in catalogue.pairs:
        for piece in re.split(rf"{HOLE}| · |\b(?:{LEVELS})\b|(?<![\w])\d+(?![\w%-])", holed(key)):
            core = piece.strip(" .,:;()")
            if not re.search(r"[A-Za-z]{3}", core) or core in everything or core.removesuffix("s") in everything:
                continue
            if any(part not in everything for part in re.split(r"(?<=[.?!…;]) |, ", core)) and not re.search(
                r"\d", key
            ):
                faults.append(f"cs.json: nobody says {core!r} of {key!r}")

    # A template that another one takes the sentences of never shows.
    for key, value in catalogue.pairs.items():
        used = {name for name, _ in PLACEHOLDER.findall(value)}
        sentence = TOKEN.sub(lambda m: f"Q{m.group(1)}q" if m.group(1) in used else "s", key)
        expected = PLACEHOLDER.sub(lambda m: f"Q{m.group(1)}q", value)
        if catalogue.translated(sentence) != expected:
            faults.append(f"cs.json: {key!r} is taken over: {catalogue.translated(sentence)!r}")

    for sentence, expected in ASSEMBLED.items():
        if catalogue.translated(sentence) != expected:
            faults.append(f"cs.json: {sentence!r} becomes {catalogue.translated(sentence)!r}")

    for line in roast_lines(root):
        if catalogue.translated(line) != line:
            faults.append(f"cs.json: translates a roast: {line!r} -> {catalogue.translated(line)!r}")

    for fault in faults:
        print(fault)
    print(f"{len(catalogue.pairs)} pairs, {len(spoken)} literals, {len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
