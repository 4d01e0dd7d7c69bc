list(APPEND foundation_sources
  string/String.cpp
  string/StringCaseMapping.cpp
  string/StringComparator.cpp
  string/StringConversions.cpp
  string/StringEditing.cpp
  string/StringSearch.cpp
  string/Utf8Cursor.cpp
  string/Utf8Encoder.cpp
)
