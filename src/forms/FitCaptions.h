// Push buttons that may shrink to the width their caption needs. The style's own minimum
// (80 pixels in Fusion) would make a row of short buttons wider than a form at its minimum
// size, and a layout squeezed below its minimum cuts captions instead.
#pragma once

class QPushButton;
class QWidget;

namespace lumora {

// The width at which the button still shows its whole caption and icon inside its frame.
int captionWidth(const QPushButton* button);

// Sets that width as the minimum of every push button under `root` that has a caption; the
// layouts still give each its usual width when the form has the room.
void letButtonsShrinkToCaptions(QWidget* root);

} // namespace lumora
