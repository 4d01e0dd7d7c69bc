list(APPEND foundation_sources
  memory/FileStream.cpp
  memory/MemoryBlock.cpp
  memory/MemoryStream.cpp
  memory/Stream.cpp
)
