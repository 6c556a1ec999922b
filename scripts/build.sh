# shellcheck shell=bash
# The steps that ./test.sh and ./run.sh share; sourced by them, from the root of the repository.

# configure PRESET: once for each build folder; later changes of CMake files are ninja's own work.
# A folder that came from elsewhere (a copied or moved clone) is configured anew.
configure() {
  local made_for
  made_for=$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "build/$1/CMakeCache.txt" 2>/dev/null || true)
  if [ -f "build/$1/build.ninja" ] && [ "$made_for" -ef . ]; then
    return
  fi
  rm -rf "build/$1"
  cmake --preset "$1"
}

# build PRESET [TARGET...]: on all cores.
build() {
  local preset=$1
  shift
  configure "$preset"
  cmake --build --preset "$preset" --parallel "$(nproc)" ${1:+--target "$@"}
}
