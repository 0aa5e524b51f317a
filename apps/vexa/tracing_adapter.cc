#include "apps/vexa/tracing_adapter.h"

#include <exception>

#include "backend/adapter/go_to_caller.h"
#include "backend/text/character_set.h"

namespace vexa::program {

namespace {

using Json = nlohmann::ordered_json;

Json requestLine(const VexawMsgOutputControllerRequest& request) {
    const bool isLong = request.form() == VexawMsgOutputControllerRequest::Form::longForm;
    Json line{{"event", "request"}};
    line["form"] = isLong ? "long" : "short";
    line["sequence"] = request.sequence();
    line["command"] = static_cast<int>(request.command());
    line["first"] = toUtf8(request.first());
    line["second"] = toUtf8(request.second());
    line["minimized"] = static_cast<int>(request.minimized());
    if (isLong) {
        line["lock"] = static_cast<int>(request.lock());
        line["type"] = static_cast<int>(request.type());
        line["password"] = toUtf8(request.password());
        line["encrypted"] = static_cast<int>(request.encrypted());
        line["yesNo"] = static_cast<int>(request.yesNo());
    }
    return line;
}

Json responseLine(bool ok, const VexawMsgOutputControllerResponse& response) {
    Json line{{"event", "response"}};
    line["ok"] = ok;
    line["severity"] = response.GetErrorSeverity();
    line["message"] = toUtf8(response.GetMsgString().str());
    line["argument"] = toUtf8(response.GetArgumentString().str());
    Json documents = Json::array();
    for (int i = 0; i < response.GetOutputDocumentCount(); ++i) {
        const VexawMsgOutputDocument* const document = response.GetOutputDocumentItem(i);
        documents.push_back({{"name", toUtf8(document->name.str())}, {"active", document->active}});
    }
    line["documents"] = std::move(documents);
    return line;
}

/// What the exception that is being handled has to say.
std::string currentExceptionText() {
    try {
        throw;
    } catch (const VexaGoToCaller&) {
        return "goToCaller";
    } catch (const std::exception& error) {
        return toUtf8(error.what());
    } catch (const char* text) {
        return toUtf8(text);
    } catch (...) {
        return "other";
    }
}

}  // namespace

OutputController* TracingAdapter::outputController() {
    return inner_.outputController() == nullptr ? nullptr : this;
}

bool TracingAdapter::Send(const VexawMsgOutputControllerRequest& request,
                          VexawMsgOutputControllerResponse& response) {
    lines_.write(requestLine(request));
    const bool ok = inner_.outputController()->Send(request, response);
    lines_.write(responseLine(ok, response));
    return ok;
}

std::string TracingAdapter::exchangeExport(const std::string& specification) {
    return exchange("export", specification, &ClientAdapter::exchangeExport);
}

std::string TracingAdapter::exchangeModify(const std::string& request) {
    return exchange("modify", request, &ClientAdapter::exchangeModify);
}

std::string TracingAdapter::exchange(const char* kind, const std::string& text,
                                     std::string (ClientAdapter::*operation)(const std::string&)) {
    const bool isModify = operation == &ClientAdapter::exchangeModify;
    lines_.write(Json{{"event", kind}, {"text", text}});
    Json reply{{"event", std::string(kind) + "Reply"}};
    try {
        std::string answer = (inner_.*operation)(text);
        reply["text"] = isModify ? toUtf8(answer) : answer;
        lines_.write(reply);
        return answer;
    } catch (...) {
        reply["exception"] = currentExceptionText();
        lines_.write(reply);
        throw;
    }
}

}  // namespace vexa::program
