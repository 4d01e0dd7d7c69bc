// The editor opcodes of an effect without an editor: the dispatcher answers them itself, and
// never reaches for the editor that is not there. On the fixture effect made in this program
// (Kelvane always has an editor).

#include "TestHost.h"
#include "fixtures/GainEffect.h"

#include <gtest/gtest.h>

using namespace q1framework;

TEST(AEffEditor, WithoutAnEditorEveryEditorOpcodeAnswersZero)
{
    TestHost host;
    GainEffect effect(TestHost::callback());
    EXPECT_EQ(effect.getAeffect()->flags & effFlagsHasEditor, 0);
    ERect* rect = nullptr;
    for (VstInt32 opcode : {effEditGetRect, effEditOpen, effEditIdle, effEditKeyDown, effEditKeyUp,
                            effSetEditKnobMode, effEditClose})
        EXPECT_EQ(effect.dispatcher(opcode, 'a', VKEY_UP, &rect, 0.0f), 0) << "opcode " << opcode;
    EXPECT_EQ(rect, nullptr);
}
