#!/usr/bin/env bash
# Runs make_corpus.py in a virtual environment of its own, build/corpus/venv, which it makes from requirements.txt.
# Needs Python 3.11 or later with venv, PyPI, and a Java runtime for the exporter (README.md). PYTHON names the Python.
set -euo pipefail
here=$(dirname "$(realpath "$0")")
environment=$here/../../build/corpus/venv

command -v java >/dev/null || {
    echo "run.sh: the exporter needs a Java runtime, 11 or later: apt-get install default-jre-headless" >&2
    exit 1
}
[ -x "$environment/bin/python" ] || "${PYTHON:-python3}" -m venv "$environment"
if ! cmp -s "$here/requirements.txt" "$environment/installed.txt"; then
    "$environment/bin/pip" install --quiet --disable-pip-version-check -r "$here/requirements.txt"
    cp "$here/requirements.txt" "$environment/installed.txt"
fi
export PYTHONDONTWRITEBYTECODE=1 OMP_NUM_THREADS=1 OPENBLAS_NUM_THREADS=1
exec nice -n 10 "$environment/bin/python" "$here/make_corpus.py" "$@"
