# Where something cannot be installed, what the package manager or npm has said is shown.
. "$(dirname "$0")/stand_ins.sh"

stand_in dpkg-query </dev/null
stand_in sudo <<'END'
exec "$@"
END
stand_in apt-get <<'END'
case $* in
*update*) echo 'Reading package lists...' ;;
*) echo 'E: Certificate verification failed'; exit 100 ;;
esac
END
! DISPLAY=:0 sh "$here/tree/run.sh" >"$here/said" 2>&1 || wrong 'a failure was passed over'
grep -qF 'E: Certificate verification failed' "$here/said" || wrong 'it was not told why'
! grep -qF 'Reading package lists' "$here/said" || wrong 'what went well was told'
! grep -q '^cmake' "$here/called" || wrong 'it was built all the same'

# npm, which the build asks for SQLite's source.
rm "$here/bin/cmake"
stand_in npm <<'END'
echo 'npm ERR! code UNABLE_TO_GET_ISSUER_CERT_LOCALLY' >&2
exit 1
END
cat >"$here/tree/CMakeLists.txt" <<'END'
cmake_minimum_required(VERSION 3.25)
project(fetch LANGUAGES NONE)
include(cmake/sqlite.cmake)
END
! cmake -S "$here/tree" -B "$here/made" -DJOURNAL_DEPS_DIR="$here/deps" >"$here/said" 2>&1 || wrong 'a failure was passed over'
grep -qF 'npm ERR! code UNABLE_TO_GET_ISSUER_CERT_LOCALLY' "$here/said" || wrong 'it was not told why'
! grep -q '^npm .*--silent' "$here/called" || wrong 'npm was told to be silent'
