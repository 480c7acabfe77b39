"""Which files are the project's, for the lint scripts: those git tracks or would add."""

import pathlib
import subprocess

ROOT = pathlib.Path(__file__).resolve().parent.parent


def git(*arguments):
    """What a git command in the project's root prints."""
    return subprocess.run(
        ["git", "-C", str(ROOT), *arguments], check=True, stdout=subprocess.PIPE
    ).stdout.decode("utf-8", "replace")


def project_files(*folders):
    """Paths relative to the root, sorted: tracked or new, not ignored, present on disk."""
    listed = git("ls-files", "-z", "--cached", "--others", "--exclude-standard", "--", *folders)
    paths = sorted({pathlib.PurePosixPath(name) for name in listed.split("\0") if name})
    return [path for path in paths if (ROOT / path).is_file()]
