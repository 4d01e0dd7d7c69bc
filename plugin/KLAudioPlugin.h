#pragma once

#include "dsp/TransientProcessor.h"
#include "plugin/AudioPlugin.h"
#include "plugin/KLMeters.h"
#include "plugin/KLParameters.h"
#include "plugin/KLStateDocument.h"
#include "plugin/PeakMeter.h"
#include "plugin/Program.h"

#include <atomic>

// Kelvane, the effect: the one place where a 0..1 control value becomes a processor setting, and
// where the audio thread leaves levels for the editor to pick up. It owns the TransientProcessor,
// the program of seven parameter values (KLParameters) and the peak meters of the editor's two
// needle meters.
//
// State: the chunk "VC2!", a 32-bit little-endian length L, then L bytes of XML text with its
// terminating zero (KLStateDocument). Loading bad state leaves the state as it was; a partial
// program is merged over the present one.
//
// Threads and the mutex (AudioPlugin's): `process` holds it for the block; so do setParameter
// (through the adapter), takeDriveLevel, prepare's program step and applyProgram. setState parses
// its text without the lock and applies the values under it, so a host may load a chunk while
// audio runs. The parameter values may be read without the lock (getParameter); the levels cross
// to the editor as relaxed atomic floats, one block old at most.
class KLAudioPlugin : public q1framework::AudioPlugin
{
public:
    // Host thread (the adapter's entry). A stereo effect with the default program applied.
    KLAudioPlugin();
    ~KLAudioPlugin() override;

    // ---- AudioPlugin. ------------------------------------------------------------------------
    // Host thread. The whole state as a chunk; true.
    bool getState(q1framework::Stream& stream) override;
    // Host thread. Reads a chunk and applies it. A wrong magic, a short stream or text that is no
    // Kelvane document leaves the state as it was; an attribute that is missing or unusable leaves
    // its value, but a missing editor size means the default 750 x 175. The program is applied
    // again in every case. Always true.
    bool setState(q1framework::Stream& stream) override;
    // The editor is always announced; createEditor makes it through the factory that the layer
    // linking the editor registered (setEditorFactory), and answers null without one.
    bool hasEditor() override { return true; }
    q1framework::AudioPluginEditor* createEditor() override;
    // Any thread; takes the mutex (the adapter holds it already). Stores value in the program and
    // sets the processor's target; an index out of 0..6, infinity and NaN are ignored. A finite
    // value outside 0..1 is stored as it stands and reaches the processor limited to 0..1.
    // Attached editors are marked to show the new value at their next idle step.
    void setParameter(float value, int index) override;
    int getNumParameters() override { return KLParameters::count; }
    // Any thread, no lock. The program's value; 0 for an index out of range.
    double getParameter(int index) override;
    q1framework::String getParameterText(float value, int index) override;
    q1framework::String getParameterName(int index) override;
    // Host thread. Buses as AudioPlugin::prepare, meters falling by 0.25 per second at
    // sampleRate (a rate below 1 Hz leaves them), then applyProgram. The processor's own rate
    // stays 44100 Hz: its detector times are fixed in samples.
    void prepare(int blockSize, bool clearBuffers, double sampleRate) override;
    int getLatency() override { return 0; }
    bool hasDoublePrecision() override { return false; }
    bool hasNoSoundInStop() override { return true; }
    // Audio thread. With one or two channels on both first buses: measures the input while an
    // editor or the host looks at the levels (areLevelsShown), processes in place on the buses'
    // memory, measures the output. Other layouts, or a null channel, leave the output buffers as
    // they are.
    void process(q1framework::TimeInfo& timeInfo, int frames) override;
    bool configureStereo() override;
    bool configureMono() override;
    // Any thread. The physical units of KLParameters (toPhysical, fromPhysical).
    float toPhysicalValue(float value, int index) override;
    float fromPhysicalValue(float physical, int index) override;
    // The meters of KLMeters. Audio thread, mutex held, after process: the levels as the last
    // block left them (measured while areLevelsShown()), and the drive stage's peak since it was
    // last taken, which starts again. While an editor is attached, the drive peak taken here is
    // also kept for it (takeDriveLevel).
    int getNumMeters() override { return KLMeters::count; }
    float takeMeterValue(int index) override;
    // Main thread. The meters for the editor: getInputLevel, getOutputLevel, takeDriveLevel.
    float readMeter(int index) override;

    // ---- The effect's own. -------------------------------------------------------------------
    // The resource pack the editor draws from, in the bundle: the plug-in holds it
    // (SharedResourcePack) for its life.
    static constexpr const char* resourceFileName = "resources.bin";

    // Makes the effect's editor for a plug-in; the caller owns it.
    using EditorFactory = q1framework::AudioPluginEditor* (*)(KLAudioPlugin& plugin);
    // Load time, before any editor is asked for: the plug-in layer cannot reach the editor's
    // classes, so the shared object's set-up registers who makes them. Null removes it.
    static void setEditorFactory(EditorFactory factory);

    // Any thread. Marks every value changed for the editors, then applies every stored value to
    // the processor, in index order, under the mutex.
    void applyProgram();
    // Main thread (the editor, once per frame). The soft clip's peak since the last call, 0..1,
    // taken under the mutex. The processor holds one peak, and the drive meter's reader on the
    // audio thread (takeMeterValue, when the host reads the meters after every block) takes it
    // from there first; the largest of the peaks it took since the last call is kept here, so the
    // editor sees every block's peak whether the host reads the meter or not.
    float takeDriveLevel();
    // Main thread, no lock. The latest input and output peak levels, 0..1.5.
    float getInputLevel() const { return inputLevel.load(std::memory_order_relaxed); }
    float getOutputLevel() const { return outputLevel.load(std::memory_order_relaxed); }

    // Main thread. The editor's size in pixels, kept in the state; a drag of the editor's corner
    // writes it, the next editor opens at it.
    int getEditorWidth() override;
    int getEditorHeight() override;
    void setEditorSize(int width, int height) override;

    // The program list of the chunk format. There is one program; an index is not used to choose
    // one. setCurrentProgram stores the index and marks every value changed for the editors.
    void setCurrentProgram(int index);
    int getCurrentProgram();
    q1framework::String getProgramName(int index);
    // Host thread. The program alone as a length-prefixed string of XML (no magic), and back;
    // reading merges over the present values as setState does and applies the program.
    bool writeProgram(int index, q1framework::Stream& stream);
    bool readProgram(int index, q1framework::Stream& stream);

    // Any thread, mutex held: the processor, for tests and benchmarks that look at its settings.
    const TransientProcessor& getProcessor() const { return processor; }

private:
    // Mutex held. Stores value as applied and sets the processor by the parameter's rule.
    void applyParameter(int index, float value);
    // Mutex held. Takes the name and every value that `reading` holds into the program, leaving
    // the others; nothing when it holds no program.
    void mergeProgram(KLStateDocument::ProgramReading& reading);

    std::atomic<float> inputLevel{0.0f};   // written by process, read by the editor
    std::atomic<float> outputLevel{0.0f};
    PeakMeter inputPeak;
    PeakMeter outputPeak;
    TransientProcessor processor;
    // Everything below is guarded by the mutex.
    int uiWidthNew;
    int uiHeightNew;
    int uiWidth;
    int uiHeight;
    Program program;
    int currentProgram;
    float activeValues[KLParameters::count] = {};
    float editorDrivePeak = 0.0f;  // the largest drive peak takeMeterValue took since takeDriveLevel
};
