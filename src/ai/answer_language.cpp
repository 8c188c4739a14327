#include "ai/answer_language.h"

#include <utility>

#include "ai/cloud_ai.h"
#include "settings/loc.h"

namespace vesko {

// clang-format off
const std::array<AnswerLanguageRow, 7> kAnswerLanguages{{
  {"fr", "[Réponds en français]",
   "(IMPORTANT : toutes les explications en français ; les mots cités, les exemples, la phrase corrigée et les traductions demandées restent dans leur langue.)",
   "Tu es un professeur de langues bienveillant. Réponds en français, de façon courte et concrète, sans introduction ni question. Quand la question impose un format avec des titres, respecte-le exactement.",
   "Tu es un professeur de chinois bienveillant. Réponds en français, en lignes courtes, sans titre ni introduction.",
   "", ""},
  {"en", "[Answer in English]",
   "(IMPORTANT: write every explanation in English, never in French; quoted words, example sentences, corrected sentences and requested translations stay in their own language.)",
   "You are a kind language teacher. Always answer in English, short and concrete, with no introduction and no questions. If the question imposes a format with headings, follow it exactly.",
   "You are a kind Chinese teacher. Always answer in English, in short lines, with no title or introduction.",
   " (", ")"},
  {"pl", "[Odpowiadaj po polsku]",
   "(WAŻNE: wszystkie wyjaśnienia pisz po polsku, nigdy po francusku ani po angielsku; cytowane słowa, przykładowe zdania, poprawione zdanie i żądane tłumaczenia zostają w swoim języku.)",
   "Jesteś życzliwym nauczycielem języków. Zawsze odpowiadaj po polsku, krótko i konkretnie, bez wstępu i bez pytań. Jeśli pytanie narzuca format z nagłówkami, trzymaj się go dokładnie.",
   "Jesteś życzliwym nauczycielem chińskiego. Zawsze odpowiadaj po polsku, krótkimi linijkami, bez tytułu i wstępu.",
   " (", ")"},
  {"ru", "[Отвечай по-русски]",
   "(ВАЖНО: все объяснения пиши по-русски, никогда не по-французски и не по-английски; цитируемые слова, примеры, исправленное предложение и запрошенные переводы остаются на своём языке.)",
   "Ты доброжелательный преподаватель языков. Всегда отвечай по-русски, коротко и конкретно, без вступления и без вопросов. Если в задании задан формат с заголовками, строго следуй ему.",
   "Ты доброжелательный преподаватель китайского. Всегда отвечай по-русски, короткими строками, без заголовка и вступления.",
   " (", ")"},
  {"th", "[ตอบเป็นภาษาไทย]",
   "(สำคัญ: เขียนคำอธิบายทั้งหมดเป็นภาษาไทย ห้ามเขียนเป็นภาษาฝรั่งเศสหรือภาษาอังกฤษ ส่วนคำที่ยกมา ประโยคตัวอย่าง ประโยคที่แก้แล้ว และคำแปลที่ขอ ให้คงไว้ในภาษาเดิม)",
   "คุณเป็นครูสอนภาษาที่ใจดี ตอบเป็นภาษาไทยเสมอ สั้นและเป็นรูปธรรม ไม่ต้องเกริ่นนำ และไม่ต้องถามคำถาม ถ้าโจทย์กำหนดรูปแบบพร้อมหัวข้อ ให้ทำตามนั้นทุกประการ",
   "คุณเป็นครูสอนภาษาจีนที่ใจดี ตอบเป็นภาษาไทยเสมอ เป็นบรรทัดสั้น ๆ ไม่มีหัวเรื่องและไม่ต้องเกริ่นนำ",
   " (", ")"},
  {"zh-Hans", "【请用简体中文回答】",
   "（重要：所有解释一律用简体中文写，绝不用法语或英语；引用的词语、例句、改正后的句子和要求的翻译保持原来的语言。）",
   "你是一位亲切的语言老师。请一律用简体中文回答，简短具体，不要开场白，也不要提问。题目若规定了带标题的格式，请完全照做。",
   "你是一位亲切的中文老师。请一律用简体中文回答，每行简短，不要标题和开场白。",
   "（", "）"},
  {"zh-Hant", "【請用繁體中文回答】",
   "（重要：所有說明一律用繁體中文（台灣）寫，絕不用法語或英語；引用的詞語、例句、改正後的句子和要求的翻譯保持原來的語言。）",
   "你是一位親切的語言老師。請一律用繁體中文（台灣）回答，簡短具體，不要開場白，也不要提問。題目若規定了帶標題的格式，請完全照做。",
   "你是一位親切的中文老師。請一律用繁體中文（台灣）回答，每行簡短，不要標題和開場白。",
   "（", "）"},
}};
// clang-format on

namespace {

const AnswerLanguageRow& rowOrFrench(std::string_view code) {
  const AnswerLanguageRow* row = answerLanguageRow(code);
  return row ? *row : kAnswerLanguages[0];
}

std::string closedSystemText(const AnswerLanguageRow& row, std::string_view sentence) {
  std::string text(sentence);
  if (row.open.empty()) return text;  // the sentence already says "Réponds en …"
  text += row.open;
  text += answerMarker(row.code);
  text += row.close;
  return text;
}

}  // namespace

const AnswerLanguageRow* answerLanguageRow(std::string_view code) {
  for (const auto& row : kAnswerLanguages)
    if (row.code == code) return &row;
  return nullptr;
}

std::string_view answerLanguageCode(std::string_view code) {
  return rowOrFrench(code).code;
}

std::string answerLanguage(const Loc& loc) {
  std::string language = loc.uiLanguage();
  if (language == "zh") return loc.isTraditional() ? "zh-Hant" : "zh-Hans";
  return std::string(answerLanguageCode(language));
}

std::string answerLanguageName(std::string_view code) {
  return Loc::frenchLanguageName(answerLanguageCode(code), false);
}

std::string answerMarker(std::string_view code) {
  return "Réponds en " + answerLanguageName(code);
}

std::string answerTag(std::string_view code) {
  std::string tag(rowOrFrench(code).tag);
  tag += '\n';
  return tag;
}

std::string_view importantParagraph(std::string_view code) {
  return rowOrFrench(code).important;
}

std::string teacherSystemText(std::string_view code) {
  const auto& row = rowOrFrench(code);
  return closedSystemText(row, row.teacher);
}

std::string chineseTeacherSystemText(std::string_view code) {
  const auto& row = rowOrFrench(code);
  return closedSystemText(row, row.chineseTeacher);
}

std::string wrapForAnswerLanguage(std::string_view code, std::string_view system,
                                  std::string_view user) {
  if (system.find(answerMarker(code)) == std::string_view::npos) return std::string(user);
  std::string wrapped = answerTag(code);
  wrapped += user;
  wrapped += "\n\n";
  wrapped += importantParagraph(code);
  return wrapped;
}

LanguageAsk::LanguageAsk(CloudAI& ai)
    : ask_([&ai](std::string system, std::string user, int maxTokens,
                 std::optional<std::string> model) {
        return ai.ask(std::move(system), std::move(user), maxTokens, std::move(model));
      }) {}

LanguageAsk::LanguageAsk(AskFunction ask) : ask_(std::move(ask)) {}

std::future<AIAnswer> LanguageAsk::ask(std::string_view answerLanguage, std::string system,
                                       std::string_view user, int maxTokens,
                                       std::optional<std::string> model) const {
  std::string wrapped = wrapForAnswerLanguage(answerLanguage, system, user);
  return ask_(std::move(system), std::move(wrapped), maxTokens, std::move(model));
}

}  // namespace vesko
