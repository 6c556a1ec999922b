#include "cli/json_form.h"

#include <nlohmann/json.hpp>

namespace carnetel {
namespace {

using Json = nlohmann::ordered_json;

std::string Line(const Json& object) {
  return object.dump(-1, ' ', false, Json::error_handler_t::replace);
}

template <class Value>
Json ObjectOf(const std::vector<std::pair<std::string, Value>>& entries) {
  Json object = Json::object();
  for (const auto& [name, value] : entries) object[name] = value;
  return object;
}

}  // namespace

std::string CardLine(const CardView& card) {
  return Line({{"row", card.row},
               {"offset", card.offset},
               {"marked", card.marked},
               {"groups", card.groups},
               {"label", card.label},
               {"fields", ObjectOf(card.fields)}});
}

std::string InfoLine(const DirectoryInfo& info) {
  return Line({{"path", info.path},
               {"version", info.version},
               {"description", info.description},
               {"owner", info.owner},
               {"cards", info.cards},
               {"key", info.key},
               {"marked", info.marked},
               {"groups", info.groups},
               {"files", ObjectOf(info.files)}});
}

std::string CountLine(const std::string& name, int64_t count) {
  return Line(Json::object({{name, count}}));
}

std::string FindingLine(const std::string& file, const std::string& text,
                        std::optional<uint32_t> offset) {
  Json object = Json::object({{"file", file}, {"finding", text}});
  if (offset) object["offset"] = *offset;
  return Line(object);
}

std::string ConsistentLine(bool consistent) {
  return Line(Json::object({{"consistent", consistent}}));
}

std::string ErrorLine(const std::string& text) {
  return Line(Json::object({{"error", text}}));
}

std::string NameLine(const std::string& name) {
  return Line(Json::object({{"name", name}}));
}

std::string CriteriaLine(const std::string& name, const std::vector<std::string>& criteria) {
  return Line({{"name", name}, {"criteria", criteria}});
}

std::string GroupLine(const GroupView& group) {
  return Line({{"name", group.name},
               {"slot", group.slot},
               {"mode", group.mode},
               {"members", group.members}});
}

std::string ProfileLine(const std::string& name, const std::string& kind) {
  return Line({{"name", name}, {"kind", kind}});
}

std::string PrintedLine(uint32_t cards, uint32_t pages) {
  return Line({{"cards", cards}, {"pages", pages}});
}

std::string LayoutLine(const LayoutView& layout) {
  Json columns = Json::array();
  for (const auto& [field, width] : layout.columns) {
    columns.push_back(Json::object({{"field", field}, {"width", width}}));
  }
  return Line({{"columns", columns}, {"width", layout.width}});
}

std::string TrialLine(const TrialView& trial) {
  Json object = Json::object({{"cards", trial.cards}});
  for (const auto& [name, count] : trial.counts) object[name] = count;
  Json lines = Json::array();
  for (const TrialView::Line& line : trial.lines) {
    Json entry = Json::object({{"line", line.line}, {"finding", line.finding}});
    if (!line.field.empty()) entry["field"] = line.field;
    if (!line.reason.empty()) entry["reason"] = line.reason;
    lines.push_back(std::move(entry));
  }
  object["lines"] = std::move(lines);
  return Line(object);
}

std::string ExchangeLine(const ExchangeView& exchange) {
  Json object = Json::object({{"result", exchange.result}});
  if (exchange.reply) {
    object["name"] = exchange.reply->name;
    object["number"] = exchange.reply->number;
    object["row"] = exchange.reply->row;
  }
  if (exchange.cards) object["cards"] = *exchange.cards;
  return Line(object);
}

CardInput ParseCardLine(std::string_view line) {
  CardInput input;
  const Json card = Json::parse(line, nullptr, false);
  if (!card.is_object()) {
    input.error = "ce n'est pas un objet JSON";
    return input;
  }
  const auto fields = card.find("fields");
  if (fields == card.end() || !fields->is_object()) {
    input.error = "la fiche n'a pas d'objet « fields »";
    return input;
  }
  for (const auto& [name, value] : fields->items()) {
    if (!value.is_string()) {
      input.error = "le champ " + name + " n'est pas un texte";
      return input;
    }
    input.fields.emplace_back(name, value.get<std::string>());
  }
  const auto marked = card.find("marked");
  input.marked = marked != card.end() && marked->is_boolean() && marked->get<bool>();
  return input;
}

}  // namespace carnetel
