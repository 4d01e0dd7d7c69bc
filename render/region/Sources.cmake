# Regions: sets of pixels as vertical strips of y intervals.
list(APPEND render_sources
  region/Region.cpp
  region/SegmentList.cpp
)
