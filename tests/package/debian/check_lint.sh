#!/bin/sh
# check_lint.sh PACKAGES: lintian finds no errors and no warnings but those that packaging/debian/*.lintian-overrides
# and source/lintian-overrides explain.
set -eu
exec lintian --allow-root --fail-on error,warning --pedantic --display-info --tag-display-limit 0 "$1"/plot2d_*.changes
