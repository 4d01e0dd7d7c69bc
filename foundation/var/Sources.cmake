list(APPEND foundation_sources
  var/Var.cpp
)
