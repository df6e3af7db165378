#include "samples/Captions.h"

namespace quillmark {
namespace {

// Entries of the start-up palette.
enum Entry : std::uint8_t { Black = 0, Cyan = 1, White = 2, Green = 3, Yellow = 4, Salmon = 8, Grey = 12 };

// Codes: background, body, outline, and what lies between body and outline.
constexpr Assignment Opaque(Entry body) {
  return {{Black, body, Black, Grey}, {0, 15, 15, 15}};
}

constexpr Assignment Plain = Opaque(White);
/// The background is a half transparent box behind the text.
constexpr Assignment Boxed = {{Black, White, Black, Grey}, {8, 15, 15, 15}};
/// The picture shows through the letters.
constexpr Assignment Faint = {{Black, White, Black, Grey}, {0, 10, 6, 8}};

}  // namespace

std::vector<Caption> DemoCaptions() {
  return {
      {1.0, 3.2, "The lamp is out again.", Plain},
      {3.6, 6.4, "Then we climb the stairs again.\nAll two hundred and twelve of them.", Plain},
      {7.0, 9.0, "- Did you bring the oil?\n- I thought you had it.", Opaque(Yellow)},
      {9.5, 12.0, "One of us will walk back down.", Opaque(Yellow)},
      {13.0, 16.0, "NORTH POINT LIGHTHOUSE\nAutumn", Boxed, Placement::Top},
      {17.2, 19.4, "(wind against the windows)", Faint, Placement::Bottom, true},
      {20.0, 23.1, "The harbour called at noon:\nthree boats are still out.", Plain},
      {23.5, 25.0, "Only three?", Opaque(Cyan)},
      {25.2, 28.0, "The fourth has come home\nwith nothing but stories.", Plain},
      {29.0, 31.2, "I would have liked to hear them.", Opaque(Cyan)},
      {32.0, 34.5, "♪ Row me over, row me home ♪", Opaque(Green), Placement::Bottom, true},
      {34.6, 37.3, "♪ past the rocks and past the foam ♪", Opaque(Green), Placement::Bottom, true},
      {38.5, 40.0, "Listen.", Plain},
      {40.2, 42.6, "A horn, to the west.\nTwo long, one short.", Plain},
      {43.0, 45.1, "That is the \"Crème Brûlée\".", Opaque(Salmon)},
      {45.5, 47.6, "Добрый вечер, маяк!\nΚαλησπέρα, φάρε!", Opaque(Salmon), Placement::Left},
      {48.2, 50.0, "Quick! The wick, the match...", Plain},
      {50.4, 52.2, "...and light.", Plain},
      {53.0, 56.0, "Every one of them saw it.", Faint},
      {57.0, 61.5, "THE END", Boxed, Placement::Top},
  };
}

std::vector<Caption> NtscCaptions() {
  return {
      {0.5, 2.6, "Good morning from the garden.", Plain},
      {3.0, 5.8, "Today we plant beans,\nwhich is easier than it looks.", Plain},
      {6.2, 8.0, "First, a hole.", Opaque(Yellow)},
      {8.3, 10.9, "Two fingers deep,\nno deeper.", Opaque(Yellow)},
      {11.5, 13.5, "Then a bean. Only one.", Plain},
      {14.0, 16.5, "(a blackbird watches)", Faint, Placement::Top, true},
      {17.0, 19.4, "Cover it, water it,\nand look away.", Plain},
      {20.0, 22.0, "FIVE DAYS LATER", Boxed, Placement::Top},
      {22.6, 24.9, "- Is that a bean?\n- That is a dandelion.", Opaque(Cyan)},
      {25.4, 28.0, "Patience. And another bean.", Plain},
  };
}

std::vector<Caption> FirstCaptions() {
  return {
      {1.0, 3.0, "Is this the train to the sea?", Plain},
      {3.4, 5.6, "All trains go to the sea,\nif you stay on long enough.", Plain},
      {6.0, 7.8, "Then I will stay on.", Plain},
      {8.2, 10.8, "May I open the window?", Plain},
      {11.2, 13.0, "It has been open since Tuesday.", Plain},
      {13.6, 16.4, "I packed three books\nand no sandwiches.", Plain},
      {16.8, 19.0, "I packed three sandwiches\nand no books.", Plain},
      {19.4, 21.0, "We could trade.", Plain},
      {22.0, 24.2, "One chapter for one sandwich.", Plain},
      {24.6, 26.4, "Cheese or tomato?", Plain},
      {26.8, 29.2, "A mystery or a love story?", Plain},
      {30.0, 32.0, "(the train slows down)", Plain, Placement::Bottom, true},
      {32.6, 35.0, "Look: the dunes.", Plain},
      {35.4, 38.2, "And I am only on page twelve.", Plain},
      {38.8, 41.0, "Keep the book.\nSend me the ending.", Plain},
      {42.0, 45.0, "I will write it on a postcard.", Plain},
  };
}

std::vector<Caption> SecondCaptions() {
  return {
      {1.2, 3.1, "Ist das der Zug ans Meer?", Plain},
      {3.3, 5.7, "Alle Züge fahren ans Meer,\nwenn man lange genug sitzen bleibt.", Plain},
      {6.1, 7.9, "Dann bleibe ich sitzen.", Plain},
      {8.3, 12.9, "- Darf ich das Fenster öffnen?\n- Es ist seit Dienstag offen.", Plain},
      {13.5, 16.5, "Ich habe drei Bücher dabei\nund keine Brote.", Plain},
      {16.9, 19.1, "Ich habe drei Brote dabei\nund keine Bücher.", Plain},
      {19.5, 21.2, "Wir könnten tauschen.", Plain},
      {21.9, 24.3, "Ein Kapitel gegen ein Brot.", Plain},
      {24.5, 26.5, "Käse oder Tomate?", Plain},
      {26.9, 29.3, "Krimi oder Liebesgeschichte?", Plain},
      {32.5, 35.1, "Da, die Dünen!", Plain},
      {35.3, 38.3, "Und ich bin erst auf Seite zwölf.", Plain},
      {38.7, 41.2, "Behalten Sie das Buch.\nSchreiben Sie mir, wie es ausgeht.", Plain},
      {42.1, 45.1, "Auf eine Ansichtskarte.", Plain},
  };
}

}  // namespace quillmark
