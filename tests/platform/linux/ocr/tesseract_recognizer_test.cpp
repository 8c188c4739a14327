// Needs the Tesseract language data (tesseract-ocr-fra, -eng, -pol, -chi-sim): labelled
// integration.
#include "platform/linux/ocr/tesseract_recognizer.h"

#include <gtest/gtest.h>
#include <leptonica/allheaders.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>

#include "app/line_at.h"
#include "platform/linux/ocr/single_thread_ocr.h"
#include "support/temp_dir.h"
#include "text/unicode.h"

namespace vesko {
namespace {

// A committed fixture as the capture would give it, in gray.
ScreenImage loadStrip(const std::string& name) {
  const std::string path = std::string(VESKO_TEST_DATA) + "/ocr/" + name;
  Pix* pix = pixRead(path.c_str());
  EXPECT_NE(pix, nullptr) << path;
  ScreenImage image;
  if (pix == nullptr) return image;
  Pix* gray = pixConvertTo8(pix, 0);
  image.width = static_cast<int>(pixGetWidth(gray));
  image.height = static_cast<int>(pixGetHeight(gray));
  image.channels = 1;
  image.pixels.resize(static_cast<std::size_t>(image.width) * image.height);
  for (int y = 0; y < image.height; ++y)
    for (int x = 0; x < image.width; ++x) {
      l_uint32 value = 0;
      pixGetPixel(gray, x, y, &value);
      image.pixels[static_cast<std::size_t>(y) * image.width + x] =
          static_cast<std::uint8_t>(value);
    }
  pixDestroy(&gray);
  pixDestroy(&pix);
  return image;
}

class TesseractRecognizerTest : public ::testing::Test {
 protected:
  // One recogniser for the whole suite, as in the program: starting an engine is the slow part.
  // Ended before exit, as the program's is (see the header).
  static void SetUpTestSuite() { shared_ = std::make_unique<TesseractRecognizer>(); }
  static void TearDownTestSuite() { shared_.reset(); }
  static TesseractRecognizer& recognizer() { return *shared_; }

 private:
  static inline std::unique_ptr<TesseractRecognizer> shared_;
};

TEST_F(TesseractRecognizerTest, ReadsTheLineUnderTheFocus) {
  struct Row {
    const char* name;
    const char* file;
    const char* mode;
    ScreenPoint focus;  // in the line, on the character `expected` names
    std::u16string text;
    std::u16string character;
    bool inverted = false;  // light text on a dark ground, as subtitles are
  };
  const Row rows[] = {
      {"French, second of three lines",
       "fr_strip.png",
       "latin",
       {180, 65},
       u"Nous étudions le français à l'école depuis trois ans.",
       u"français"},
      {"Chinese, second of two lines",
       "zh_strip.png",
       "zh-Hans",
       {231, 88},
       u"今天天气很好，我们去公园散步。",
       u"去公园"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    ScreenImage image = loadStrip(row.file);
    ASSERT_TRUE(image.valid());
    if (row.inverted)
      for (std::uint8_t& pixel : image.pixels) pixel = static_cast<std::uint8_t>(255 - pixel);
    const auto recognition = recognizer().recognize(image, row.mode, row.focus);
    ASSERT_TRUE(recognition) << recognition.error();
    ASSERT_EQ(recognition->lines.size(), 1u);
    const OCRLine& line = recognition->lines[0];
    // Apostrophes come back straight or curly depending on the model's mood.
    std::u16string text = line.text;
    std::replace(text.begin(), text.end(), u'\u2019', u'\'');
    EXPECT_EQ(text, row.text) << text::toUtf8(line.text);
    EXPECT_EQ(line.charRects.size(), text::characterCount(line.text));
    EXPECT_TRUE(line.rect.contains(row.focus));
    EXPECT_TRUE(recognition->scope.contains(row.focus));

    // The box under the focus is the character the pixels show there.
    const auto at = lineAt(recognition->lines, row.focus);
    ASSERT_TRUE(at);
    EXPECT_EQ(at->index, line.text.find(row.character));
  }
}

TEST_F(TesseractRecognizerTest, NothingBetweenLines) {
  const ScreenImage image = loadStrip("fr_strip.png");
  // Between the first line (ink down to y 34) and the second (from y 57).
  const auto recognition = recognizer().recognize(image, "latin", {300, 46});
  ASSERT_TRUE(recognition) << recognition.error();
  EXPECT_TRUE(recognition->lines.empty());
  EXPECT_TRUE(recognition->scope.contains({300, 46}));
  // The emptiness holds between the lines, not over them.
  EXPECT_FALSE(recognition->scope.contains({300, 65}));
  EXPECT_FALSE(recognition->scope.contains({300, 25}));
}

TEST_F(TesseractRecognizerTest, UnknownModesAndMissingDataAreErrors) {
  const ScreenImage image = loadStrip("fr_strip.png");
  const auto unknown = recognizer().recognize(image, "klingon", {180, 65});
  ASSERT_FALSE(unknown);
  EXPECT_NE(unknown.error().find("klingon"), std::string::npos);
  EXPECT_FALSE(recognizer().recognize(ScreenImage{}, "latin", {0, 0}));

  testing::TempDir empty;
  TesseractRecognizer withoutData(empty.path().string());
  const auto missing = withoutData.warm("latin");
  ASSERT_FALSE(missing);
  EXPECT_NE(missing.error().find("fra+eng+pol"), std::string::npos);
  // The failure is remembered, not retried at every read.
  EXPECT_FALSE(withoutData.recognize(image, "latin", {180, 65}));
}

}  // namespace
}  // namespace vesko

int main(int argc, char** argv) {
  vesko::ensureSingleThreadedOcr(argv);
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
