#!/usr/bin/env bash
# run.sh MODULES ENGINE GENERATOR SHARE: looks at the pages in headless Chromium. Where Chromium,
# Node.js or the modules that scripts/setup.sh browser installs are missing, says so and ends
# with 77, which ctest takes for left out.
set -euo pipefail
modules=$1

for program in chromium node; do
  command -v "$program" >/dev/null || {
    echo "$program is not installed: the pages are not looked at in a browser"
    exit 77
  }
done
for module in playwright-core axe-core; do
  [ -d "$modules/$module" ] || {
    echo "$module is not installed in $modules: the pages are not looked at in a browser"
    exit 77
  }
done
exec node "$(dirname "${BASH_SOURCE[0]}")/site_test.mjs" "$@"
