# Image effects: the float picture they compute in.
list(APPEND render_sources
  effects/FloatImage.cpp
)
