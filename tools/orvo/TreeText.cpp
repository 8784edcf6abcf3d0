#include "tools/orvo/TreeText.h"

#include <cstdio>

namespace orvo {
namespace tool {
namespace {

bool isContainerForm(const Json& j) {
  return j.is_object() && (j.contains("entries") || j.contains("items") ||
                           j.contains("setEntries") || j.contains("class"));
}

// A member as text: strings as they are, anything else in JSON.
std::string asText(const Json& j) { return j.is_string() ? j.get<std::string>() : j.dump(); }

bool isTextType(const std::string& type) {
  return type == "Buffer" || type == "AsciiString" || type == "Utf8String" ||
         type == "OmtesString" || type == "Opaque" || type == "Xml" || type == "AnsiPage";
}

// Text values are quoted; numbers, dates and times in their text forms are not.
std::string scalarText(const Json& j, const std::string& type = "Buffer") {
  if (j.is_null()) return "(blank)";
  if (j.is_string()) {
    return isTextType(type) ? "\"" + asText(j) + "\"" : asText(j);
  }
  return j.dump();
}

// One line's worth of the members that are not nested data.
std::string attributes(const Json& obj, std::initializer_list<const char*> skip) {
  std::string out;
  for (auto it = obj.begin(); it != obj.end(); ++it) {
    bool skipped = false;
    for (const char* s : skip) skipped = skipped || it.key() == s;
    if (skipped) continue;
    out += (out.empty() ? " " : "  ") + it.key() + "=" + asText(*it);
  }
  return out;
}

class Tree {
 public:
  std::string text;

  void message(const Json& msg, int depth) {
    if (msg.contains("error")) {
      line(depth, "(" + asText(msg["error"]) + ")");
      return;
    }
    std::string head = asText(msg["class"]);
    head += "  domain " + msg["domain"].dump() + "  stream " + msg["streamId"].dump();
    if (msg.contains("flags")) {
      head += "  [";
      for (std::size_t k = 0; k < msg["flags"].size(); ++k) {
        head += (k ? " " : "") + asText(msg["flags"][k]);
      }
      head += "]";
    }
    line(depth, head);
    for (auto it = msg.begin(); it != msg.end(); ++it) {
      const std::string& key = it.key();
      if (key == "class" || key == "domain" || key == "streamId" || key == "flags" ||
          key == "body" || key == "bodyType") {
        continue;
      }
      if (key == "key") {
        line(depth + 1, "key:" + attributes(*it, {"attrib", "attribType"}));
        if (it->contains("attrib"))
          value(depth + 2, "attrib", (*it)["attribType"], (*it)["attrib"]);
        continue;
      }
      line(depth + 1, key + ":" + (it->is_object() ? attributes(*it, {}) : " " + scalarText(*it)));
    }
    if (msg.contains("bodyType"))
      value(depth + 1, "body", msg["bodyType"], msg.value("body", Json()));
  }

 private:
  void line(int depth, const std::string& s) {
    text.append(static_cast<std::size_t>(depth) * 2, ' ');
    text += s;
    text += '\n';
  }

  // A labelled value: on the same line when it is a scalar, below when nested.
  void value(int depth, const std::string& label, const Json& type, const Json& v) {
    const std::string typeText = asText(type);
    if (!isContainerForm(v)) {
      line(depth,
           label + " " + typeText + " " + (v.is_object() ? v.dump() : scalarText(v, typeText)));
      return;
    }
    if (v.contains("class")) {
      line(depth, label + " " + typeText);
      message(v, depth + 1);
      return;
    }
    line(depth, label + " " + typeText +
                    attributes(v, {"entries", "setEntries", "items", "summary", "setDefs",
                                   "containerType", "itemType"}));
    container(depth + 1, v, typeText);
  }

  void container(int depth, const Json& v, const std::string& type) {
    const Json inner = v.value("containerType", Json(""));
    if (v.contains("setDefs")) {
      for (const Json& def : v["setDefs"]) line(depth, "setDef " + def.dump());
    }
    if (v.contains("summary")) value(depth, "summary", inner, v["summary"]);
    if (v.contains("items")) {
      for (std::size_t k = 0; k < v["items"].size(); ++k) {
        line(depth,
             "[" + std::to_string(k) + "] " + scalarText(v["items"][k], v.value("itemType", "")));
      }
    }
    for (const char* part : {"setEntries", "entries"}) {
      if (!v.contains(part)) continue;
      std::size_t index = 0;
      for (const Json& e : v[part]) entry(depth, e, type, inner, index++);
    }
    if (v.contains("error")) line(depth, "(" + asText(v["error"]) + ")");
  }

  void entry(int depth, const Json& e, const std::string& type, const Json& inner,
             std::size_t index) {
    char label[160];
    if (type == "FieldList") {
      std::snprintf(label, sizeof label, "%-6s %-20s", e["fid"].dump().c_str(),
                    e.value("name", std::string("?")).c_str());
    } else if (type == "ElementList") {
      std::snprintf(label, sizeof label, "%-24s", scalarText(e["name"]).c_str());
    } else if (type == "Map") {
      std::snprintf(label, sizeof label, "%s key %s", scalarText(e["action"], "").c_str(),
                    scalarText(e["key"]).c_str());
    } else if (type == "Vector") {
      std::snprintf(label, sizeof label, "[%s] %s", e["index"].dump().c_str(),
                    scalarText(e["action"], "").c_str());
    } else if (type == "FilterList") {
      std::snprintf(label, sizeof label, "#%s %s", e["id"].dump().c_str(),
                    scalarText(e["action"], "").c_str());
    } else {
      std::snprintf(label, sizeof label, "#%zu", index);
    }
    // Set-defined entries take their type from the set definition.
    Json entryType = e.contains("type")                               ? e["type"]
                     : (type == "FieldList" || type == "ElementList") ? Json("(set)")
                                                                      : inner;
    if (!e.contains("value")) {
      line(depth, std::string(label) + (e.contains("hex") ? " hex " + asText(e["hex"]) : ""));
      return;
    }
    if (e.contains("display")) {
      line(depth, std::string(label) + " " + asText(entryType) + " " + e["value"].dump() + " \"" +
                      asText(e["display"]) + "\"");
      return;
    }
    value(depth, label, entryType.is_null() ? Json("") : entryType, e["value"]);
  }
};

}  // namespace

std::string messageTree(const Json& message) {
  Tree tree;
  tree.message(message, 0);
  return tree.text;
}

}  // namespace tool
}  // namespace orvo
