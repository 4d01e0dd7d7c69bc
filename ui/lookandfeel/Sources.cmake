# LookAndFeel: the default font, palette and drawing of controls without film strips.
list(APPEND ui_sources
  lookandfeel/LookAndFeel.cpp
)
