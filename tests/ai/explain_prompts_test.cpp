// The prompts are the product's contract with the models: these tests spell them out in full, so
// that any change to a word of them is seen and meant.
#include "ai/explain_prompts.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ai/answer_language.h"
#include "ai/explanation.h"
#include "dict/cedict.h"
#include "settings/loc.h"
#include "support/fake_clock.h"
#include "support/french_texts.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

// The built-in interface tables behind a French interface.
struct Texts : testing::FrenchTexts {
  AITitles titles(std::string_view language) const { return AITitles(loc, language); }
};

// The part every word prompt ends with, around the expression title.
std::string expressionAndTitles(const std::string& e) {
  return " Termine TOUJOURS par une ligne « " + e +
         " : … = … » : l'expression figée, la structure ou la collocation courante dont ce mot "
         "fait partie, dans la langue d'origine et COMPLÈTE telle qu'elle apparaît dans le texte "
         "(ex. 摀著耳朵, jamais 摀著…) ; « … » seulement AU MILIEU pour une partie qui change "
         "entre "
         "deux mots fixes (與其…不如…), jamais à la fin ; puis son sens dans la langue de réponse "
         "(ex. « " +
         e + " : 與其…不如… = … », « " + e +
         " : 對…沒印象 = … »). Cherche bien : il y en a presque toujours une. Omets cette ligne "
         "seulement s'il n'y en a vraiment aucune (nom simple, nom propre), et dans ce cas n'en "
         "parle pas : ne commente jamais ces consignes. Écris ces titres exactement comme indiqué "
         "(ils sont déjà dans la langue de réponse), suivis de « : ».";
}

const std::string kDoubt =
    " Si le mot entre 【 】 n'a pas vraiment de sens dans cette phrase (mot coupé, erreur de "
    "lecture de l'écran, faute de frappe) ou si tu n'es pas sûr de son sens ICI, commence par UNE "
    "ligne « 🤔 … » qui le dit franchement et donne le mot ou l'expression probable (ex. « 🤔 "
    "识户 "
    "n'est pas un mot : c'est sans doute 识广, dans 见多识广 »). Si c'est un nom propre ou le "
    "titre "
    "d'une œuvre (film, manga, série, livre), dis-le et donne son titre officiel.";

std::string wordInSentence(const std::string& presentation, const std::string& phrase,
                           const std::string& expression) {
  return presentation + "Commence par UNE ligne « " + phrase +
         " » qui montre la structure de la phrase autour du mot, éléments séparés par « + » avec "
         "leur rôle (ex. « " +
         phrase +
         " : 都 + 押 + 入牢房 = adverbe + verbe + complément de lieu »). Puis analyse UNIQUEMENT "
         "le "
         "mot entre 【 】, tel qu'il est employé dans CETTE phrase : sa nature, sa fonction "
         "(sujet, "
         "verbe, complément, particule…), avec quel mot il se construit, et ce qu'il veut dire "
         "ici. Le sens dans CETTE phrase passe en premier et doit être juste pour ce contexte (ex. "
         "« paying upfront » = payer d'avance, pas « franc ») ; les autres sens du mot : une seule "
         "ligne courte à la fin, ou rien. L'expression doit venir de la phrase elle-même. "
         "Appuie-toi sur les mots voisins. Ne pose aucune question." +
         kDoubt + expressionAndTitles(expression);
}

std::string wordAlone(const std::string& word, const std::string& expression) {
  return word +
         " a été lu seul, sans phrase. Ne pose aucune question. Donne sa nature et ses 2 emplois "
         "les plus courants, chacun avec un exemple très court." +
         expressionAndTitles(expression);
}

const std::string kRetry =
    "\n\nATTENTION : ta réponse précédente était FAUSSE :\n« Sens : franc »\nRemarque de "
    "l'utilisateur : c'est payer d'avance\nRelis le texte caractère par caractère, sans réutiliser "
    "les noms de ta réponse précédente. Si tu n'es pas sûr d'un nom, translittère-le (pinyin) et "
    "dis-le. Garde le même format de réponse.";

TEST(ExplainPromptsTest, WordInItsSentence) {
  Texts texts;
  ExplainQuestion question{"押", "他们都被押入牢房。", "chinois", false, std::nullopt};
  auto request = explanationRequest(question, "fr", texts.titles("fr"), AIProvider::claude,
                                    "claude-sonnet-4-5");
  EXPECT_EQ(request.system,
            "Tu es un professeur de langues bienveillant. Réponds en français, de façon courte et "
            "concrète, sans introduction ni question. Quand la question impose un format avec des "
            "titres, respecte-le exactement.");
  EXPECT_EQ(request.user, wordInSentence("Texte en chinois : « 他们都被【押】入牢房。 »\n",
                                         "Phrase", "Expression"));
  EXPECT_EQ(request.maxTokens, 420);
  EXPECT_EQ(request.model, std::nullopt);  // a first try uses the learner's model
  EXPECT_EQ(request.question().user,
            "[Réponds en français]\n" + request.user +
                "\n\n(IMPORTANT : toutes les explications en français ; les mots cités, les "
                "exemples, la phrase corrigée et les traductions demandées restent dans leur "
                "langue.)");
}

TEST(ExplainPromptsTest, WordMissingFromItsSentenceIsGivenAfterIt) {
  Texts texts;
  std::string prompt = wordPrompt("upfront", std::string("They asked for payment up front."), "",
                                  texts.titles("en"));
  EXPECT_EQ(prompt,
            wordInSentence("Texte : « They asked for payment up front. »\nMot : 【upfront】\n",
                           "Sentence", "Expression"));
}

TEST(ExplainPromptsTest, WordAloneHasNoMarksAndNoDoubtClause) {
  Texts texts;
  for (const std::optional<std::string>& sentence :
       {std::optional<std::string>(), std::optional<std::string>("  \n")}) {
    SCOPED_TRACE(sentence ? "blank sentence" : "no sentence");
    std::string prompt = wordPrompt("upfront", sentence, "anglais", texts.titles("pl"));
    EXPECT_EQ(prompt, wordAlone("upfront", "Wyrażenie"));
    EXPECT_EQ(prompt.find("【"), std::string::npos);
    EXPECT_EQ(prompt.find("🤔"), std::string::npos);
  }
}

TEST(ExplainPromptsTest, Chengyu) {
  Texts texts;
  ExplainQuestion question{"画蛇添足", "他这样做是画蛇添足。", "chinois", true, std::nullopt};
  auto request = explanationRequest(question, "zh-Hant", texts.titles("zh-Hant"),
                                    AIProvider::claude, "claude-sonnet-4-5");
  EXPECT_EQ(request.system,
            "你是一位親切的中文老師。請一律用繁體中文（台灣）回答，每行簡短，不要標題和開場白。"
            "（Réponds en chinois traditionnel (Taïwan)）");
  EXPECT_EQ(
      request.user,
      "« 画蛇添足 » est un chengyu (成语). (Texte où il apparaît, à ne pas recopier : « "
      "他这样做是画蛇添足。 ») Ne pose aucune question. Réponds exactement ainsi :\n"
      "1. Une ligne « 字面意思 = … » avec le sens littéral de chaque caractère DANS ce "
      "chengyu, séparés par « + ».\n"
      "2. Une ligne par caractère : « **caractère** (pinyin) : son sens ici — pourquoi il est "
      "dans le chengyu ». \n"
      "Si le caractère a plusieurs lectures ou sens, dis lequel est employé et lequel ne "
      "l'est pas (ex. 朝 cháo = dynastie, pas zhāo = matin).\n"
      "字面意思 : (mot à mot, en une phrase).\n"
      "意思 : (le vrai sens, et le sens figuré s'il existe).\n"
      "此處 : ce que le chengyu veut dire dans cette phrase.\n"
      "例句 : une phrase courte avec pinyin et traduction.");
  EXPECT_EQ(request.maxTokens, 700);
  EXPECT_EQ(request.question().user.substr(0, std::string("【請用繁體中文回答】\n« ").size()),
            "【請用繁體中文回答】\n« ");
}

TEST(ExplainPromptsTest, ChengyuWithoutSentenceHasNoContextClause) {
  Texts texts;
  std::string prompt = chengyuPrompt("画蛇添足", std::nullopt, texts.titles("fr"));
  EXPECT_TRUE(
      prompt.starts_with("« 画蛇添足 » est un chengyu (成语). Ne pose aucune question. "
                         "Réponds exactement ainsi :\n1. Une ligne « Sens littéral = … »"));
  EXPECT_EQ(prompt.find("Texte où il apparaît"), std::string::npos);
}

TEST(ExplainPromptsTest, RetryAddsTheSuffixAndTheStrongerModelExceptOnDevice) {
  Texts texts;
  ExplainQuestion question{"upfront", std::nullopt, "anglais", false,
                           WrongAnswer{"Sens : franc", "c'est payer d'avance"}};
  struct Row {
    AIProvider provider;
    std::optional<std::string> model;
  };
  for (const Row& row :
       {Row{AIProvider::claude, "claude-sonnet-4-5"}, Row{AIProvider::vesko, "claude-sonnet-4-5"},
        Row{AIProvider::apple, std::nullopt}}) {
    SCOPED_TRACE(std::string(providerRow(row.provider).name));
    auto request =
        explanationRequest(question, "fr", texts.titles("fr"), row.provider, "claude-sonnet-4-5");
    EXPECT_EQ(request.user, wordAlone("upfront", "Expression") + kRetry);
    EXPECT_EQ(request.model, row.model);
    EXPECT_EQ(request.maxTokens, 420);
  }
}

TEST(ExplainPromptsTest, RetryWithoutRemark) {
  EXPECT_EQ(
      retrySuffix("Sens : franc", " "),
      "\n\nATTENTION : ta réponse précédente était FAUSSE :\n« Sens : franc »\nRelis le texte "
      "caractère par caractère, sans réutiliser les noms de ta réponse précédente. Si tu "
      "n'es pas sûr d'un nom, translittère-le (pinyin) et dis-le. Garde le même format de "
      "réponse.");
}

// The whole question as sent, word read alone, in every answer language.
TEST(ExplainPromptsTest, EachAnswerLanguage) {
  struct Row {
    const char* code;
    const char* system;
    const char* tag;
    const char* expression;
    const char* important;
  };
  const std::vector<Row> rows{
      {"fr",
       "Tu es un professeur de langues bienveillant. Réponds en français, de façon courte et "
       "concrète, sans introduction ni question. Quand la question impose un format avec des "
       "titres, respecte-le exactement.",
       "[Réponds en français]", "Expression",
       "(IMPORTANT : toutes les explications en français ; les mots cités, les exemples, la "
       "phrase corrigée et les traductions demandées restent dans leur langue.)"},
      {"en",
       "You are a kind language teacher. Always answer in English, short and concrete, with no "
       "introduction and no questions. If the question imposes a format with headings, follow it "
       "exactly. (Réponds en anglais)",
       "[Answer in English]", "Expression",
       "(IMPORTANT: write every explanation in English, never in French; quoted words, example "
       "sentences, corrected sentences and requested translations stay in their own language.)"},
      {"pl",
       "Jesteś życzliwym nauczycielem języków. Zawsze odpowiadaj po polsku, krótko i konkretnie, "
       "bez wstępu i bez pytań. Jeśli pytanie narzuca format z nagłówkami, trzymaj się go "
       "dokładnie. (Réponds en polonais)",
       "[Odpowiadaj po polsku]", "Wyrażenie",
       "(WAŻNE: wszystkie wyjaśnienia pisz po polsku, nigdy po francusku ani po angielsku; "
       "cytowane słowa, przykładowe zdania, poprawione zdanie i żądane tłumaczenia zostają w "
       "swoim języku.)"},
      {"ru",
       "Ты доброжелательный преподаватель языков. Всегда отвечай по-русски, коротко и конкретно, "
       "без вступления и без вопросов. Если в задании задан формат с заголовками, строго следуй "
       "ему. (Réponds en russe)",
       "[Отвечай по-русски]", "Выражение",
       "(ВАЖНО: все объяснения пиши по-русски, никогда не по-французски и не по-английски; "
       "цитируемые слова, примеры, исправленное предложение и запрошенные переводы остаются на "
       "своём языке.)"},
      {"th",
       "คุณเป็นครูสอนภาษาที่ใจดี ตอบเป็นภาษาไทยเสมอ สั้นและเป็นรูปธรรม ไม่ต้องเกริ่นนำ "
       "และไม่ต้องถามคำถาม ถ้าโจทย์กำหนดรูปแบบพร้อมหัวข้อ ให้ทำตามนั้นทุกประการ (Réponds en thaï)",
       "[ตอบเป็นภาษาไทย]", "สำนวน",
       "(สำคัญ: เขียนคำอธิบายทั้งหมดเป็นภาษาไทย ห้ามเขียนเป็นภาษาฝรั่งเศสหรือภาษาอังกฤษ "
       "ส่วนคำที่ยกมา ประโยคตัวอย่าง ประโยคที่แก้แล้ว และคำแปลที่ขอ ให้คงไว้ในภาษาเดิม)"},
      {"zh-Hans",
       "你是一位亲切的语言老师。请一律用简体中文回答，简短具体，不要开场白，也不要提问。"
       "题目若规定了带标题的格式，请完全照做。（Réponds en chinois simplifié）",
       "【请用简体中文回答】", "表达",
       "（重要：所有解释一律用简体中文写，绝不用法语或英语；引用的词语、例句、改正后的句子和要求的"
       "翻译保持原来的语言。）"},
      {"zh-Hant",
       "你是一位親切的語言老師。請一律用繁體中文（台灣）回答，簡短具體，不要開場白，也不要提問。"
       "題目若規定了帶標題的格式，請完全照做。（Réponds en chinois traditionnel (Taïwan)）",
       "【請用繁體中文回答】", "表達",
       "（重要：所有說明一律用繁體中文（台灣）寫，絕不用法語或英語；引用的詞語、例句、改正後的句子"
       "和要求的翻譯保持原來的語言。）"},
  };
  Texts texts;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.code);
    ExplainQuestion question{"bank", std::nullopt, "anglais", false, std::nullopt};
    auto sent = explanationRequest(question, row.code, texts.titles(row.code), AIProvider::openai,
                                   std::nullopt)
                    .question();
    EXPECT_EQ(sent.system, row.system);
    EXPECT_EQ(sent.user, std::string(row.tag) + "\n" + wordAlone("bank", row.expression) + "\n\n" +
                             row.important);
    EXPECT_EQ(sent.maxTokens, 420);
  }
}

TEST(ExplainPromptsTest, ChineseUsageLines) {
  const std::string oral =
      " Pour le chinois : du chinois ORAL et naturel, comme on le dit vraiment à voix haute "
      "(口语), "
      "pas un registre écrit ni littéraire — pas de 与 / 之 / 乃 / 而 / 亦 / 其 / 即 ni de "
      "tournures "
      "de dissertation ; pas de mot à mot : rends le sens comme un locuteur natif le dirait.";
  const std::string taiwan =
      " Pour le chinois traditionnel : usage de Taïwan (台灣用語, ex. 影片, 軟體, 資訊).";
  const std::string mainland = " Pour le chinois simplifié : usage de Chine continentale.";
  struct Row {
    std::vector<std::string> targets;
    std::string expected;
  };
  const std::vector<Row> rows{
      {{"fr", "zh-Hans", "zh-Hant"}, oral + taiwan + mainland},  // Taiwan first, whatever the order
      {{"zh-Hant"}, oral + taiwan},
      {{"en", "zh-Hans"}, oral + mainland},
      {{"zh"}, oral},
      {{"en", "fr"}, ""},
      {{}, ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.targets.size());
    EXPECT_EQ(chineseUsageLines(row.targets), row.expected);
  }
}

TEST(ExplainPromptsTest, RewritePrompt) {
  struct Row {
    const char* target;
    const char* instruction;
  };
  const std::vector<Row> rows{
      {"en",
       "Rewrite the following explanation entirely in English. Keep the same lines, headings and "
       "symbols (【 】, ☆, **); quoted words, example sentences and translations stay in their own "
       "language. Output only the rewritten text."},
      {"ru",
       "Rewrite the following explanation entirely in Russian. Keep the same lines, headings and "
       "symbols (【 】, ☆, **); quoted words, example sentences and translations stay in their own "
       "language. Output only the rewritten text."},
      {"fr",
       "Réécris entièrement l'explication suivante en français. Garde les mêmes lignes, les mêmes "
       "titres et les mêmes symboles (【 】, ☆, **) ; les mots cités, les phrases d'exemple et les "
       "traductions restent dans leur langue. Donne seulement le texte réécrit."},
      {"zh-Hans",
       "把下面这段说明完整改写成简体中文。保留同样的行、标题和符号（【 "
       "】、☆、**）；引用的原文词句、"
       "例句和翻译保持原来的语言。只输出改写后的文字。"},
      {"zh-Hant",
       "把下面這段說明完整改寫成繁體中文（台灣）。保留同樣的行、標題和符號（【 】、☆、**）；引用的"
       "原文詞句、例句和翻譯保持原來的語言。只輸出改寫後的文字。"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.target);
    EXPECT_EQ(rewritePrompt("Sens : banque", row.target),
              std::string(row.instruction) + "\n\nSens : banque");
  }
  // The translator's system text names no answer language: the user text goes out unwrapped.
  EXPECT_EQ(wrapForAnswerLanguage("en", kRewriteSystemText, "x"), "x");
}

}  // namespace
}  // namespace vesko
