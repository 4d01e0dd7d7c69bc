#include "editor/MainComponent.h"

#include "editor/AudioPluginEditor.h"
#include "editor/DriveLed.h"
#include "editor/LevelMeter.h"
#include "editor/MultiStateButton.h"
#include "media/resource/ResourcePack.h"
#include "plugin/EditedPlugin.h"
#include "plugin/KLMeters.h"
#include "plugin/KLParameters.h"
#include "plugin/SharedResourcePack.h"
#include "render/graphics/SoftwareGraphics.h"
#include "ui/input/MouseEvent.h"
#include "ui/layout/AdapterComponent.h"

#include <algorithm>

using namespace q1framework;

namespace
{
// Linear level to needle position: the rows of the meter's law, loudest first.
struct LevelRow
{
    float level;
    float position;
};
constexpr LevelRow levelRows[] = {{1.412f, 1.0f}, {1.0f, 0.66f}, {0.707f, 0.39f},
                                  {0.5f, 0.22f},  {0.25f, 0.07f}, {0.1f, 0.0f}};
}  // namespace

MainComponent::MainComponent(AdapterComponent& scalingContainer, EditedPlugin& editedPlugin,
                             AudioPluginEditor& owner)
    : background(), plugin(editedPlugin), container(scalingContainer), editor(owner)
{
    setComponentId(ownTag);
    setOpaque(true);
    if (const ResourcePack* pack = SharedResourcePack::get())
        background = pack->getImage(String("KL.0001.tif"));
    // Whatever the file held, the picture is the editor's ground: nothing shows through it.
    if (!background.isEmpty())
        background.orAlpha(255);
    createChildren();
    for (int tag = 0; tag < KLParameters::count; ++tag)
        refreshControl(tag);
    const Point size = background.isEmpty() ? Point(pictureWidth, pictureHeight) : background.getSize();
    setBounds(Rectangle(Point(), size), false);
}

MainComponent::~MainComponent() = default;

float MainComponent::levelToPosition(float level)
{
    if (!(level < levelRows[0].level))
        return level != level ? 0.0f : 1.0f;
    for (size_t row = 1; row < sizeof levelRows / sizeof levelRows[0]; ++row)
    {
        const LevelRow& upper = levelRows[row - 1];
        const LevelRow& lower = levelRows[row];
        if (level > lower.level)
            return lower.position
                   + (level - lower.level) / (upper.level - lower.level) * (upper.position - lower.position);
    }
    return 0.0f;
}

Component* MainComponent::getControl(int tag)
{
    if (tag < 0 || tag >= KLParameters::count)
        return nullptr;
    return findChildById(tag, true);
}

int MainComponent::tagOf(Component* child)
{
    const int64_t id = child != nullptr ? child->getComponentId() : -1;
    return id >= 0 && id < KLParameters::count ? static_cast<int>(id) : -1;
}

bool MainComponent::refreshControl(int tag)
{
    Component* control = getControl(tag);
    if (control == nullptr)
        return true;
    if (control->isPressed())
        return false;
    control->setValue(plugin.getParameter(tag), false);
    return true;
}

void MainComponent::paint(SoftwareGraphics& graphics)
{
    if (!background.isEmpty())
        graphics.drawImage(background, Point(), false, 255);
}

void MainComponent::tick()
{
    inputMeter->setLevel(levelToPosition(plugin.readMeter(KLMeters::inputLevel)));
    outputMeter->setLevel(levelToPosition(plugin.readMeter(KLMeters::outputLevel)));
    const float drive = plugin.readMeter(KLMeters::driveLevel);
    driveLed->setValue(drive * drive, false);
}

void MainComponent::drawResources(RenderingContext& context)
{
    inputMeter->drawResource(context);
    outputMeter->drawResource(context);
    driveLed->drawResource(context);
}

// ---- From the controls to the host ----

void MainComponent::childValueChanged(Component* child)
{
    const int tag = tagOf(child);
    if (tag >= 0)
        editor.notifyValueChanged(static_cast<float>(child->getValue()), tag);
}

void MainComponent::childMouseDown(Component* child, const MouseEvent&)
{
    const int tag = tagOf(child);
    if (tag >= 0)
        editor.notifyGestureBegan(tag);
}

void MainComponent::childMouseUp(Component* child, const MouseEvent&)
{
    const int tag = tagOf(child);
    if (tag >= 0)
        editor.notifyGestureEnded(tag);
}

// ---- Resizing by drag ----

void MainComponent::mouseMove(const MouseEvent& event)
{
    lastMouse = Point(event.x, event.y);
    inResizeZone = event.x >= resizeZoneLeft;
    setCursor(Mouse::Cursor(inResizeZone ? Mouse::resizeLeftRightCursor : Mouse::arrowCursor));
}

void MainComponent::mouseDown(const MouseEvent& event)
{
    inResizeZone = event.x >= resizeZoneLeft;
    startSize = Point(plugin.getEditorWidth(), plugin.getEditorHeight());
    dragStart = Point(event.screenX, event.screenY);
}

void MainComponent::mouseDrag(const MouseEvent& event)
{
    if (!inResizeZone)
        return;
    const Point size = sizeForWidth(event.screenX - dragStart.x + startSize.x);
    plugin.setEditorSize(size.x, size.y);
    editor.resize(size.x, size.y, true);
}

Point MainComponent::sizeForWidth(int width) const
{
    width = std::max(std::min(width, maximumWidth), minimumWidth);
    const double aspect = static_cast<double>(getHeight()) / getWidth();
    return Point(width, static_cast<int>(width * aspect));
}
