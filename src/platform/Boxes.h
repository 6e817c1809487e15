#pragma once

namespace lapvane {

enum class Icon { None, Information, Warning, Critical, Question };
enum class Buttons { Ok, OkCancel, YesNoCancel };
enum class Answer { Ok, Cancel, Yes, No };

}  // namespace lapvane
