#!/usr/bin/env bash
# Sets up, builds, and passes all tests.

. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

install_packages
build release
run_tests release
