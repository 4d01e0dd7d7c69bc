#include "editor/KLAudioPluginEditor.h"

#include "editor/MainComponent.h"
#include "plugin/KLAudioPlugin.h"
#include "render/graphics/SoftwareGraphics.h"
#include "ui/layout/AdapterComponent.h"

using namespace q1framework;

KLAudioPluginEditor::KLAudioPluginEditor(EditedPlugin& plugin)
    : AudioPluginEditor(plugin), container(new AdapterComponent())
{
    setOpaque(true);
    addAndMakeVisible(container);
    mainComponent = new MainComponent(*container, plugin, *this);
    container->setInnerComponent(mainComponent);
    setSize(plugin.getEditorWidth(), plugin.getEditorHeight());
}

KLAudioPluginEditor::~KLAudioPluginEditor() = default;

AudioPluginEditor* KLAudioPluginEditor::create(KLAudioPlugin& plugin)
{
    return new KLAudioPluginEditor(plugin);
}

void KLAudioPluginEditor::refreshControl(int index)
{
    // A control in the user's hand keeps its value; the mark stays, so that the stored value
    // shows once the control is let go.
    if (!mainComponent->refreshControl(index))
        markChanged(index);
}

void KLAudioPluginEditor::offerSize(const Point& offered)
{
    if (offered.x < 1 || offered.y < 1)
        return;
    const Point size = mainComponent->sizeForWidth(offered.x);
    if (size == getSize())
        return;
    getPlugin().setEditorSize(size.x, size.y);
    resize(size.x, size.y, true);
}

void KLAudioPluginEditor::resized()
{
    container->setBounds(Rectangle(container->getPosition(), getSize()), true);
}

void KLAudioPluginEditor::paint(SoftwareGraphics& graphics)
{
    // The ground under the scaled picture, whose outermost pixels the resampling leaves
    // translucent: the same black on every repaint, so they always blend to the same colour.
    Colour black(0, 0, 0, 255);
    graphics.fillRect(Rectangle(Point(), getSize()), black, false);
}

void KLAudioPluginEditor::afterRender(RenderingContext& context)
{
    mainComponent->drawResources(context);
}
