# cmake -D output=FILE -D release=1.0.0.0 -P WriteRelease.cmake
# Writes the header with the release number and the time of the build, or of SOURCE_DATE_EPOCH.

# A number is padded with zeros by string(TIMESTAMP); asctime pads the day of the month with a
# blank.
string(TIMESTAMP month_and_day "%b %d" UTC)
string(REGEX REPLACE " 0" "  " month_and_day "${month_and_day}")
string(TIMESTAMP build_time "%a ${month_and_day} %H:%M:%S %Y" UTC)

string(REGEX MATCHALL "[0-9]+" numbers "${release}")
list(APPEND numbers 0 0 0)
list(SUBLIST numbers 0 4 numbers)
list(JOIN numbers "." release)

file(
  WRITE "${output}"
  "#ifndef TQXML_RELEASE_H
#define TQXML_RELEASE_H

#define TQXML_RELEASE \"${release}\"
#define TQXML_BUILD_TIME \"${build_time}\"

#endif
")
