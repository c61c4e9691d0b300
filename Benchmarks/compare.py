#!/usr/bin/python3
"""Times halvane-cli as a whole process, beside other programs where they are installed (Debian's libnvtt-bin).

    Benchmarks/compare.py [--size N] [--rounds N] [--bin FOLDER]

Both sides start from the same seeded picture in an uncompressed file of a kind that each reads fastest, and write a file.
The rounds alternate between the two, and the best time of each counts; what is printed is their ratio.
"""

import argparse
import shutil
import subprocess
import sys
import tempfile
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent


def best_times(commands, outputs, rounds):
    """The least seconds of each command, run in turn; what it writes is not there before."""
    best = [float("inf")] * len(commands)
    for _ in range(rounds):
        for i, (command, output) in enumerate(zip(commands, outputs)):
            output.unlink(missing_ok=True)
            start = time.perf_counter()
            subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
            best[i] = min(best[i], time.perf_counter() - start)
    return best


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--size", type=int, default=2048, help="side of the square picture in pixels")
    parser.add_argument("--rounds", type=int, default=10)
    parser.add_argument("--bin", type=Path, default=ROOT / "build" / "bin", help="where halvane-cli and make-picture are")
    arguments = parser.parse_args()

    if not shutil.which("nvcompress"):
        sys.exit("nvcompress is missing: apt-get install libnvtt-bin")
    try:
        from PIL import Image
    except ImportError:
        sys.exit("Pillow is missing: run this with /usr/bin/python3, after apt-get install python3-pil")

    cli = arguments.bin / "halvane-cli"
    with tempfile.TemporaryDirectory() as folder:
        folder = Path(folder)
        png, tga, mox = folder / "picture.png", folder / "picture.tga", folder / "picture.mox"
        side = str(arguments.size)
        subprocess.run([arguments.bin / "make-picture", png, side, side, "1"], check=True)
        Image.open(png).save(tga)
        subprocess.run([cli, "convert", png, "-o", mox], check=True)

        cases = []
        for name in ("bc1", "bc3"):
            ours, theirs = folder / f"{name}.mox", folder / f"{name}.dds"
            cases.append((f"encode {name}",
                          [cli, "convert", mox, "-o", ours, "--format", name], ours,
                          ["nvcompress", "-fast", "-nomips", f"-{name}", tga, theirs], theirs))
            back = folder / "back.mox"
            cases.append((f"decode {name}",
                          [cli, "convert", ours, "-o", back, "--format", "r8g8b8a8"], back,
                          ["nvdecompress", theirs], theirs.with_suffix(".tga")))
        chain = folder / "chain.mox"
        cases.append(("MIP chain, linear",
                      [cli, "convert", mox, "-o", chain, "--mips", "all"], chain,
                      ["nvcompress", "-rgb", tga, folder / "chain.dds"], folder / "chain.dds"))

        print(f"{arguments.size} x {arguments.size}, best of {arguments.rounds}")
        for name, ours, our_output, theirs, their_output in cases:
            our_time, their_time = best_times([ours, theirs], [our_output, their_output], arguments.rounds)
            print(f"{name:20} {our_time * 1000:7.1f} ms {their_time * 1000:7.1f} ms   {their_time / our_time:5.2f} times")


if __name__ == "__main__":
    main()
