#!/usr/bin/env python3
"""Turns the JSON output of the benchmark programs into bench/RESULTS.md.

Each case is registered as "Case/vorn" beside one or more "Case/<peer>" runs of the same
program. The table has one row per case and peer, with the median CPU time of the repetitions
on both sides and the ratio vorn/peer.

Usage: report.py --out RESULTS.md --commands FILE --machine FILE result.json...
"""

import argparse
import datetime
import json
import sys

# What each case does, in the words of the table.
CASES = {
    "CStringCopy1K": "copy of a 1 KB text",
    "CStringFromLiteral": "construction from a 12-byte literal",
    "CStringAppend64K": "`+=` of 4096 pieces of 16 bytes into an empty string (64 KB)",
    "CUnicodeStringCopy1K": "copy of 1024 UTF-16 units",
    "CUnicodeStringAppend512": "`+=` of 31 pieces of 16 units into a string that has the room",
    "CUnicodeStringFromUTF8_1M": "`FromUTF8` of 1 MB of text in nine scripts",
    "CUnicodeStringToUTF8_1M": "`ToUTF8` of the same text",
    "MemoryWriteByte1M": "`Write(char)` of 1 MB into a default stream (granule 64)",
    "MemoryWriteByte1MReserved": "`Write(char)` of 1 MB with the room made first on both sides",
    "MemoryWriteBlock4K": "`Write` of 1 MB in 4 KB blocks into a default stream",
    "MemoryWriteBlock4KReserved": "`Write` of 1 MB in 4 KB blocks with the room made first",
    "DataWriteInt32_1M": "`CDataOutputStream::WriteInt32` of a million values into memory",
    "DataReadInt32_1M": "`CDataInputStream::ReadInt32` of a million values from memory",
    "Base64Encode1M": "`CBinaryData::ToBase64String` of 1 MB",
    "Base64Decode1M": "`CBinaryData::ParseBase64String` of the same text",
    "StringSetPut100K": "`CStringSet::Put` of 100,000 keys of 12 bytes into a new set",
    "StringSetLookup100K": "`Contains` of each of those keys",
    "StringSetLookup100KLongKeys": "`Contains` of 100,000 keys of 16 bytes",
    "Sort1M": "`vorn::util::qsort` of a million random `int`",
    "XmlRead1M": "`CXMLTextReader::ReadToken` through 1 MB of records (attributes, two "
                 "namespaces, text, CDATA), 130,000 tokens",
    "XmlRead100M": "the same through 100 MB",
    "ConditionNotifyNoWaiter": "`Notify` under the lock with nobody waiting",
    "ConditionWaitZero": "`Wait(0)` under the lock with nobody notifying",
    "ConditionPingPong": "round trip of a turn between two threads through one condition (wall time)",
    "SemaphoreAcquireRelease": "`Acquire` and `Release` of a free binary semaphore",
    "SemaphorePingPong": "round trip between two threads through two semaphores (wall time)",
    "EventSetWait": "`SetEvent` and a wait on the same auto-reset event, one thread",
    "EventPingPong": "round trip between two threads through two auto-reset events (wall time)",
    "RegExNarrowAscii1M": "`CRegEx::Matches` of 1 MB of ASCII with a match at its end",
    "RegExNarrowMixed1M": "the same over 1 MB of UTF-8 in five scripts and emoji",
    "SocketThroughput1G": "1 GB over loopback in 64 KB blocks, written and read by one thread",
    "SocketRoundTrip100K": "100,000 request/response pairs of 32 bytes over loopback, one thread",
    "FileWrite64K": "256 MB written to a file in 64 KB blocks through `CFileOutputStream`",
    "FileRead64K": "the same read in 64 KB blocks through `CFileInputStream`",
    "FileWriteByte": "256 MB written a byte at a time through `CBufferedOutputStream` (64 KB) "
                     "over `CFileOutputStream`; the peers with 64 KB buffers",
    "FileReadByte": "the same read a byte at a time through `CBufferedInputStream` (64 KB) "
                    "over `CFileInputStream`",
    "Tokenize10M": "`CStringTokenizer` over 10 MB of comma-separated fields of 1 to 15 bytes",
    "Base64Stream64M": "`CBase64OutputStream` of 64 MB, one line, into memory with the room",
}

# Where the library's cost is set by its contract, the rule that sets it. Shown for every case
# slower than its peer by more than SLOW, and for the cases listed in ALWAYS.
WHY = {
    "CStringFromLiteral":
        "Every non-empty `CString` is one pointer to a pooled buffer, so each construction takes "
        "a block from the string pool under its spin lock and gives it back the same way, where "
        "`std::string` keeps up to 15 bytes inside itself.",
    "CStringAppend64K":
        "`+=` scans from the start of the text for its end, and above 1024 bytes each growth "
        "allocates exactly the room needed and copies the text: appending is linear in the "
        "present length, so building a text this way is quadratic (`CStringBuffer` is the "
        "builder).",
    "CUnicodeStringAppend512":
        "`+=` appends with `ucscat`, which scans from the start of the text for its end, so each "
        "append is linear in the present length.",
    "CUnicodeStringFromUTF8_1M":
        "`FromUTF8` walks the text twice by the same rules, first counting the units and then "
        "storing them into a buffer of that size, where ICU decodes in one pass.",
    "MemoryWriteByte1M":
        "The stream grows by a fixed granule (64 bytes by default), allocating a new block and "
        "copying the bytes each time: 16,384 copies of up to 1 MB here, where the vector doubles.",
    "MemoryWriteByte1MReserved":
        "`Write(char)` is the stream's virtual primitive, one call per byte that checks the "
        "stream is open and has room, where `push_back` is inlined into the loop.",
    "MemoryWriteBlock4K":
        "The stream grows by a fixed granule, so every 4 KB block that doesn't fit allocates "
        "a new block and copies all bytes so far, where the string doubles.",
    "StringSetPut100K":
        "Each key costs two allocations, the table entry and the `CString` key's pooled buffer, "
        "and the pool takes its blocks from the system one at a time and gives them back as "
        "the set is freed; the peer's node holds a 12-byte key in the string itself.",
    "StringSetLookup100KLongKeys":
        "The string hash samples about eight bytes of a key of 16 bytes or more (every second "
        "byte here), so keys that differ only in unsampled bytes share a chain, and a lookup "
        "walks it.",
    "Tokenize10M":
        "Every token is a `CString`: the tokenizer copies the text into a `CString` of its own "
        "when it is made, and each token's bytes into the token's buffer through the "
        "character-aware copy of `CString::Set` (the buffer is reused while the caller keeps no "
        "copy), where the split loop hands out views.",
    "Sort1M":
        "The sort calls its comparator through the virtual `IComparator::Compare` and swaps "
        "elements byte by byte; `std::sort` inlines both.",
    "ConditionNotifyNoWaiter":
        "`Notify` enters and leaves the condition's own unblocking lock, a second mutex beside "
        "the caller's, to read its three counters, where the peer reads one waiter count "
        "without a lock.",
    "ConditionPingPong":
        "A waiter takes the gate semaphore while it still holds the caller's lock, a "
        "notification keeps the gate until the waiter it woke has left, and that waiter's "
        "leaving step takes the caller's lock again. So after each hand-off the notifying "
        "thread's next `Wait` sleeps on the gate, and the woken thread then sleeps on the "
        "caller's lock: three sleeps per hand-off where the peer has one (the benchmark's "
        "`sleeps` counter: 6.0 per round trip against 2.0).",
    "SemaphoreAcquireRelease":
        "Each operation checks the handle, locks and unlocks the semaphore's mutex and goes "
        "through the wait's deadline and result code, where `sem_t` is one atomic operation on "
        "its count.",
    "SemaphorePingPong":
        "A thread that finds the count at zero always sleeps on the semaphore's condition "
        "variable (2.0 sleeps per round trip) and, once woken, takes the semaphore's mutex "
        "again; `sem_t` waits on its count itself and sleeps less often (1.5).",
    "EventSetWait":
        "`SetEvent` and the wait each check the handle and its kind, lock the event's mutex, and "
        "go through the wait's deadline and result code and the signal's look at waits on "
        "several objects; the peer is an inlined flag under one mutex.",
    "RegExNarrowMixed1M":
        "The narrow form converts the text to UTF-16 on every call (the wide form hands its "
        "text over as it is) and, with a match at the end, walks the whole text once more to "
        "turn the engine's unit positions into bytes; for ASCII only the copy remains.",
    "FileWrite64K":
        "Each block is one `write` of 64 KB with nothing copied on the way; `fwrite` first fills "
        "its 4 KB buffer from the block and then writes 4 KB and 60 KB, two system calls and a "
        "copy per block, and `std::ofstream` makes one `writev` per block (counted with "
        "`strace`). The time is the kernel's copy into the page cache and the truncation of the "
        "file of the last run; the CPU time leaves out the writeback to the disk, which comes "
        "later on the kernel's threads, and the figures move from run to run with its backlog.",
    "FileRead64K":
        "One `read` of 64 KB per block on all three sides (counted with `strace`); the stream "
        "adds a virtual call and its closed check per block. The time is the kernel's copy out "
        "of the page cache, and the ratio is noise around 1.",
    "FileWriteByte":
        "`Write(char)` is one virtual call that checks the stream is open and the buffer has "
        "room, then stores the byte; every 64 KB go out in one `write`. `putc` takes the "
        "stream's lock for each byte, and `std::ofstream::put` builds a sentry for each byte.",
    "FileReadByte":
        "`Read()` is one virtual call with the closed check, the sign extension and the end "
        "test; a refill is one `read` of 64 KB. `getc` takes the stream's lock for each byte, "
        "and `std::ifstream::get` builds a sentry for each byte.",
}
ALWAYS = {"CStringAppend64K", "RegExNarrowMixed1M", "FileWrite64K", "FileRead64K",
          "FileWriteByte", "FileReadByte"}

WHY["XmlRead1M"] = (
    "The fixed costs of a token; the reader's own work (its token queue and handles) adds 10% to "
    "them (the `fixed_costs` row). Dropped one at a time from the floor plus fixed costs, per MB "
    "against a floor of 5.9 ms: an `XMLBuffer` of 1024 units per element callback costs 5.9 ms "
    "(1.0 floor), the copy of each text and name into the token's strings 6.3 ms (1.1), the "
    "attribute list of a start element and its records 3.5 ms (0.6), the token object and its "
    "count block 3.1 ms (0.5). Each string block comes from its pool under a spin lock, and each "
    "allocation counts itself atomically for the test switch.")
WHY["XmlRead100M"] = "The fixed costs of a token, as for XmlRead1M."
ALWAYS |= {"ConditionPingPong"}

PEERS = {
    "std_string": "`std::string`",
    "std_u16string": "`std::u16string`",
    "std_vector": "`std::vector<char>::push_back`",
    "icu": "ICU `UnicodeString`",
    "poco": "POCO",
    "std_unordered_set": "`std::unordered_set<std::string>`",
    "std_sort": "`std::sort`",
    "c_qsort": "C `qsort`",
    "xerces_scan": "Xerces-C progressive scan, empty handlers (the floor)",
    "fixed_costs": "the floor plus the tokens' fixed costs",
    "libxml2": "libxml2 `xmlTextReader`",
    "std_condition_variable": "`std::condition_variable`",
    "sem_t": "POSIX `sem_t`",
    "std_mutex_cv_event": "`std::mutex` + `std::condition_variable` event",
    "wide": "`CRegEx` wide form",
    "xerces": "Xerces-C narrow entry",
    "posix": "POSIX `send`/`recv`",
    "fwrite": "C `fwrite`",
    "fread": "C `fread`",
    "putc": "C `putc`",
    "getc": "C `getc`",
    "ofstream": "`std::ofstream`",
    "ifstream": "`std::ifstream`",
    "std_string_view": "`std::string_view` split loop",
    "binary_data": "`CBinaryData::ToBase64String`",
}
SLOW = 1.5

TO_NS = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}


def format_time(ns):
    for unit, scale in (("s", 1e9), ("ms", 1e6), ("µs", 1e3)):
        if ns >= scale:
            return f"{ns / scale:.3g} {unit}"
    return f"{ns:.3g} ns"


def medians(paths):
    """Median CPU time in ns by run name, the repetitions behind it, and the clock."""
    times, repetitions, mhz = {}, 0, None
    for path in paths:
        with open(path) as f:
            data = json.load(f)
        mhz = data.get("context", {}).get("mhz_per_cpu", mhz)
        for b in data["benchmarks"]:
            if b.get("run_type") == "aggregate" and b.get("aggregate_name") != "median":
                continue
            name = b["run_name"]
            # Cases timed on the wall clock (hand-offs between threads) carry this suffix.
            wall = name.endswith("/real_time")
            if wall:
                name = name[: -len("/real_time")]
            if b.get("run_type") == "aggregate" or name not in times:
                times[name] = b["real_time" if wall else "cpu_time"] * TO_NS[b["time_unit"]]
            repetitions = max(repetitions, b.get("repetitions", 1))
    return times, repetitions, mhz


def rows(times):
    by_case = {}
    for name, ns in times.items():
        case, _, side = name.partition("/")
        by_case.setdefault(case, {})[side] = ns
    order = {case: i for i, case in enumerate(CASES)}
    for case in sorted(by_case, key=lambda c: (order.get(c, len(order)), c)):
        sides = by_case[case]
        if "vorn" not in sides:
            print(f"report: {case} has no vorn run", file=sys.stderr)
            continue
        for peer in sorted(s for s in sides if s != "vorn"):
            yield case, peer, sides["vorn"], sides[peer]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--out", required=True)
    parser.add_argument("--commands", required=True, help="file with the commands that ran")
    parser.add_argument("--machine", required=True, help="file describing the machine")
    parser.add_argument("results", nargs="+")
    args = parser.parse_args()

    times, repetitions, mhz = medians(args.results)
    table = list(rows(times))
    with open(args.commands) as f:
        commands = f.read().strip()
    with open(args.machine) as f:
        machine, _, load = f.read().strip().partition("\n")

    out = ["# Benchmark results", ""]
    clock = f", {mhz} MHz" if mhz else ""
    out.append(f"Date: {datetime.date.today().isoformat()}. Machine: {machine}{clock}"
               + (f"; {load}." if load else "."))
    out.append("")
    out.append(f"Each figure is the median CPU time (wall time for the cases marked so) of "
               f"{repetitions} repetitions, each case and its peer timed in the same program run "
               "with the repetitions interleaved at random. A ratio above 1 means the library is "
               "slower.")
    out.append("")
    out.append("| Case | What | Peer | vorn | Peer time | vorn/peer |")
    out.append("|---|---|---|---:|---:|---:|")
    notes = []
    for case, peer, ours, theirs in table:
        ratio = ours / theirs
        mark = ""
        if case in WHY and (ratio > SLOW or case in ALWAYS):
            if case not in [c for c, _ in notes]:
                notes.append((case, WHY[case]))
            mark = f" [{[c for c, _ in notes].index(case) + 1}]"
        elif ratio > SLOW:
            mark = " (unexplained)"
        out.append(f"| {case} | {CASES.get(case, '')} | {PEERS.get(peer, peer)} | {format_time(ours)} | "
                   f"{format_time(theirs)} | {ratio:.2f}{mark} |")
    if notes:
        out.append("")
        out.append("Where the cost comes from:")
        out.append("")
        for i, (case, text) in enumerate(notes, 1):
            out.append(f"{i}. {case}: {text}")
    out.append("")
    out.append("Commands:")
    out.append("")
    out.append("```")
    out.append(commands)
    out.append("```")
    with open(args.out, "w") as f:
        f.write("\n".join(out) + "\n")


if __name__ == "__main__":
    main()
