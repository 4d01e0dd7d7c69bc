#include "host/KelvaneServices.h"

#include "editor/KLAudioPluginEditor.h"
#include "media/resource/ResourcePack.h"
#include "native/bundle/BundlePaths.h"
#include "plugin/KLAudioPlugin.h"
#include "plugin/SharedResourcePack.h"
#include "render/font/FontServices.h"
#include "ui/lookandfeel/LookAndFeel.h"

namespace
{
q1framework::ResourcePack* loadResourcePack(const char* fileName)
{
    return q1framework::ResourcePack::loadResourcePack(fileName);
}

void deleteResourcePack(q1framework::ResourcePack* pack)
{
    delete pack;
}
}  // namespace

void KelvaneServices::registerAll()
{
    q1framework::registerFontServices();
    q1framework::LookAndFeel::registerServices();
    q1framework::ResourcePack::setResourcePathFunction(&q1framework::BundlePaths::getResourcePath);
    q1framework::SharedResourcePack::setFunctions(&loadResourcePack, &deleteResourcePack);
    KLAudioPlugin::setEditorFactory(&KLAudioPluginEditor::create);
}
