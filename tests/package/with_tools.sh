#!/bin/sh
# with_tools.sh "TOOL..." COMMAND...: runs the command where all tools are installed. Otherwise it says what is missing
# and ends with 77, by which the tests tell that they are skipped.
set -eu
tools=$1
shift
for tool in $tools; do
    command -v "$tool" > /dev/null && continue
    echo "SKIPPED, nothing was tested: there is no $tool here. ./test.sh installs it." >&2
    exit 77
done
exec "$@"
