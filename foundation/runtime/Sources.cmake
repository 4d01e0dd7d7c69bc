list(APPEND foundation_sources
  runtime/ReferenceCountedObject.cpp
)
