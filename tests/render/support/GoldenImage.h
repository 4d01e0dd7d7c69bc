#pragma once

#include "media/image/Image.h"

#include <gtest/gtest.h>

// Golden-image comparison for the renderer's scene tests.
//
// A scene is compared byte for byte with tests/render/golden/<feature>/<TestName>.png, decoded by
// the media library (the PNG holds straight colour, which decodes back to the same premultiplied
// bytes for every pixel whose colour bytes do not exceed its alpha; a picture with another pixel
// fails, since a PNG cannot hold it). TestName is the name of the running test.
//
// With the environment variable Q1_UPDATE_GOLDENS=1 the picture is written as the new golden
// instead, and the comparison passes. When a golden is missing or differs, the test fails and
// writes <TestName>.actual.png and, when there is a golden, <TestName>.diff.png (differing pixels
// red, equal ones a faint grey of the golden) into golden/<feature>/ under the test's build
// folder, naming their paths in the failure.
//
// matchesGoldenOf compares with the golden picture of another test, testName, for a scene that
// must look exactly like that test's (the same editor shown by another plug-in format); the
// update switch leaves that golden alone, since its own test makes it.
namespace GoldenImage
{
::testing::AssertionResult matchesGolden(const q1framework::Image& picture, const char* feature);
::testing::AssertionResult matchesGoldenOf(const q1framework::Image& picture, const char* feature,
                                           const char* testName);
}
