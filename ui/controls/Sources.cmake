# Controls: film-strip components, buttons, toggles, sliders and knobs.
list(APPEND ui_sources
  controls/AnimatableComponent.cpp
  controls/Button.cpp
  controls/Knob.cpp
  controls/Slider.cpp
  controls/ToggleButton.cpp
)
