// What draws, inside the library that draws; everybody else calls `beginDrawing`.
#pragma once

#include <memory>
#include <string>

#include "frontend/drawing/picture_drawing.h"

/// The exported name. See `beginDrawing`.
extern "C" void vexaBeginDrawing(const vexa::frontend::Picture& picture, std::string rules,
                                 std::string alternative, const vexa::frontend::DrawingOrder& order,
                                 std::unique_ptr<vexa::frontend::PendingDrawing>& drawing);
