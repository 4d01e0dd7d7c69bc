#pragma once

namespace q1framework
{

// The host's transport at the start of one audio block, handed to AudioPlugin::process. The host
// adapter fills ppqPosition and tempo when the host tells them; every other field keeps its
// default. Positions in quarter notes, rates in Hz, tempo in beats per minute.
struct TimeInfo
{
    double samplePosition = 0.0;   // samples since the start of the song
    double sampleRate = 44100.0;
    double ppqPosition = 0.0;      // quarter notes since the start of the song
    double tempo = 125.0;
    double barStart = 0.0;         // ppqPosition of the current bar's start
    double cycleStart = 0.0;       // ppqPosition of the loop's start
    double beatsPerBar = 4.0;
    int timeSignatureNumerator = 4;
    int timeSignatureDenominator = 4;
    double cycleEnd = 0.0;         // ppqPosition of the loop's end
};

}  // namespace q1framework
