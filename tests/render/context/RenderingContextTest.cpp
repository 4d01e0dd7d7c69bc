#include "MemoryContext.h"

#include <gtest/gtest.h>

#include <memory>

using namespace q1framework;

namespace
{
// Writes its name into a shared record when told of the deletion, and drops its texture then.
class NamedListener : public RenderingContext::Listener
{
public:
    NamedListener(std::string listenerName, std::vector<std::string>& sharedRecord)
        : name(std::move(listenerName)), record(sharedRecord)
    {
    }
    void renderingContextDeleted(RenderingContext* context) override
    {
        record.push_back(name);
        EXPECT_EQ(texture == nullptr ? nullptr : texture->getContext(), texture == nullptr ? nullptr : context);
        texture.reset();
    }
    std::string name;
    std::vector<std::string>& record;
    std::unique_ptr<Texture> texture;
};

// Pixel (x, y) holds x + 100 * y in its blue and green bytes, alpha 255.
Image numberedImage(int width, int height)
{
    Image image(width, height, true);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
        {
            const int number = x + 100 * y;
            const uint8_t pixel[4] = {uint8_t(number), uint8_t(number >> 8), 0, 255};
            std::memcpy(image.getPixelPointer(x, y), pixel, 4);
        }
    return image;
}
}  // namespace

TEST(RenderingContext, AListenerIsListedOnce)
{
    std::vector<std::string> record;
    NamedListener meter("meter", record);
    MemoryContext context;
    EXPECT_TRUE(context.addListener(&meter));
    EXPECT_FALSE(context.addListener(&meter));
    EXPECT_EQ(context.getListenerCount(), 1);
}

TEST(RenderingContext, RemovingKeepsTheOrderAndAnUnknownListenerIsNotFound)
{
    std::vector<std::string> record;
    NamedListener first("first", record), second("second", record), third("third", record), stranger("x", record);
    {
        MemoryContext context;
        for (NamedListener* listener : {&first, &second, &third})
            context.addListener(listener);
        EXPECT_FALSE(context.removeListener(&stranger));
        EXPECT_TRUE(context.removeListener(&second));
        EXPECT_FALSE(context.removeListener(&second));
    }
    EXPECT_EQ(record, (std::vector<std::string>{"third", "first"}));
}

TEST(RenderingContext, ListenersDropTheirTexturesWhenTheContextGoes)
{
    std::vector<std::string> record;
    NamedListener early("early", record), late("late", record);
    auto context = std::make_unique<MemoryContext>();
    early.texture.reset(context->createTexture(4, 4, 0, 7));
    late.texture.reset(context->createTexture(4, 4, 0, 7));
    context->addListener(&early);
    context->addListener(&late);
    const MemoryContext* observed = context.get();
    EXPECT_EQ(observed->liveTextures, 2);
    context.reset();
    EXPECT_EQ(record, (std::vector<std::string>{"late", "early"}));
    EXPECT_EQ(early.texture, nullptr);
}

TEST(RenderingContext, ARegionOutsideTheImageMakesNoTexture)
{
    MemoryContext context;
    const Image image = numberedImage(100, 100);
    EXPECT_EQ(context.createTextureFromImage(image, Rectangle(100, 0, 10, 10), 1, false), nullptr);
    EXPECT_EQ(context.createTextureFromImage(image, Rectangle(-20, 5, 20, 10), 1, false), nullptr);
    EXPECT_EQ(context.liveTextures, 0);
}

TEST(RenderingContext, ARegionGivesItsClippedSizeButThePixelsFromTheCorner)
{
    MemoryContext context;
    const Image image = numberedImage(100, 100);
    std::unique_ptr<Texture> texture(context.createTextureFromImage(image, Rectangle(10, 10, 20, 20), 5, true));
    ASSERT_NE(texture, nullptr);
    EXPECT_EQ(texture->getSize(), Point(20, 20));
    EXPECT_EQ(texture->getKind(), 5);
    const Image& texels = static_cast<MemoryContext::MemoryTexture&>(*texture).texels;
    EXPECT_EQ(texels.getPixelPointer(0, 0)[0], 0);  // (0, 0) of the image, not (10, 10)
    EXPECT_EQ(texels.getPixelPointer(19, 19)[0], 1919 & 0xff);
    EXPECT_TRUE(static_cast<MemoryContext::MemoryTexture&>(*texture).unpremultiplied);

    std::unique_ptr<Texture> clipped(context.createTextureFromImage(image, Rectangle(90, 95, 20, 20), 1, false));
    EXPECT_EQ(clipped->getSize(), Point(10, 5));
}

TEST(RenderingContext, OneColourRectanglesUseItAtEveryCorner)
{
    MemoryContext context;
    context.fillRect(Rectangle(1, 2, 3, 4), Colour(0x80ff0000));
    context.drawRect(Rectangle(5, 6, 7, 8), Colour(0xff00ff00));
    EXPECT_EQ(context.drawn, (std::vector<std::string>{"fill 1,2,3,4 #80FF0000 #80FF0000 #80FF0000 #80FF0000",
                                                        "outline 5,6,7,8 #FF00FF00 #FF00FF00 #FF00FF00 #FF00FF00"}));
}
