# Controls: film-strip components, buttons, toggles, sliders, knobs, scroll bars and popup menus.
list(APPEND ui_sources
  controls/AnimatableComponent.cpp
  controls/Button.cpp
  controls/Knob.cpp
  controls/PopupMenu.cpp
  controls/PopupMenuInnerComponent.cpp
  controls/ScrollBar.cpp
  controls/Slider.cpp
  controls/ToggleButton.cpp
)
