// Interface texts in Thai: the French text the program shows → its translation.
// One row per text; every table has a row for every text, with the same placeholders
// (%d, %@, %%). tests/settings/loc_table_test.cpp checks both, and that every text the
// code hands to Loc::t has a row.

#include "settings/loc_rows.h"

namespace vesko::loc_rows {
namespace {

// clang-format off
constexpr LocRow kRows[] = {
  // The hover, the status item and the word chooser
  {"Au simple survol", "เมื่อวางเมาส์"},
  {"Avec la touche maintenue", "เมื่อกดปุ่มค้างไว้"},
  {"n'est pas dans « Tes langues » : Réglages → Langues", "ไม่อยู่ใน “ภาษาของคุณ”: การตั้งค่า → ภาษา"},
  {"se lit en maintenant la touche", "จะอ่านเมื่อกดปุ่มค้างไว้เท่านั้น"},
  {"activée (clic : Réglages · clic droit : menu · ⌥X : éteindre)", "เปิดอยู่ (คลิก: การตั้งค่า · คลิกขวา: เมนู · ⌥X: ปิด)"},
  {"désactivée (clic : Réglages · clic droit : menu · ⌥X : allumer)", "ปิดอยู่ (คลิก: การตั้งค่า · คลิกขวา: เมนู · ⌥X: เปิด)"},
  {"Vesko : autorise l'« Enregistrement de l'écran » (Réglages)", "Vesko: โปรดอนุญาต “การบันทึกหน้าจอ” (การตั้งค่า)"},
  {"forme du dictionnaire", "รูปพจนานุกรม"},
  {"nom propre (translittération probable)", "ชื่อเฉพาะ (น่าจะเป็นการทับศัพท์)"},

  // AI providers and the messages that stand in for an answer
  {"IA d'Apple, hors ligne", "AI ของ Apple แบบออฟไลน์"},
  {"IA locale, hors ligne", "AI ในเครื่อง แบบออฟไลน์"},
  {"IA Vesko", "AI ของ Vesko"},
  {"L'IA est en pause pour le moment. Réessaie plus tard.", "AI หยุดให้บริการชั่วคราว โปรดลองใหม่ภายหลัง"},
  {"Il manque la clé", "ยังไม่มีคีย์"},
  {"dans Réglages → IA.", "ใน การตั้งค่า → AI"},
  {"L'IA d'Apple n'est pas disponible sur ce Mac : choisis Claude ou DeepSeek dans Réglages → IA.", "ใช้ AI ของ Apple บน Mac เครื่องนี้ไม่ได้ โปรดเลือก Claude หรือ DeepSeek ใน การตั้งค่า → AI"},
  {"L'IA d'Apple n'est pas disponible.", "ใช้ AI ของ Apple ไม่ได้"},
  {"Ajoute ta clé Claude dans Réglages → IA.", "เพิ่มคีย์ Claude ของคุณใน การตั้งค่า → AI"},
  {"Ajoute ta clé ChatGPT (OpenAI) dans Réglages → IA.", "เพิ่มคีย์ ChatGPT (OpenAI) ของคุณใน การตั้งค่า → AI"},
  {"Ajoute ta clé DeepSeek dans Réglages → IA.", "เพิ่มคีย์ DeepSeek ของคุณใน การตั้งค่า → AI"},
  {"Service injoignable. En Chine, Claude et ChatGPT sont bloqués : choisis DeepSeek dans Réglages → IA.", "ติดต่อบริการไม่ได้ ในจีน Claude และ ChatGPT ถูกบล็อก โปรดเลือก DeepSeek ใน การตั้งค่า → AI"},
  {"Pas de connexion internet ou service injoignable.", "ไม่มีการเชื่อมต่ออินเทอร์เน็ต หรือติดต่อบริการไม่ได้"},
  {"erreur", "ข้อผิดพลาด"},
  {"Le service a refusé la demande :", "บริการปฏิเสธคำขอ:"},
  {"%@ est surchargé en ce moment. Réessaie dans une minute, ou choisis une autre IA dans Réglages → IA.", "ขณะนี้ %@ มีผู้ใช้งานหนาแน่น ลองใหม่ในอีกหนึ่งนาที หรือเลือก AI อื่นใน การตั้งค่า → AI"},
  {"Réponse vide.", "ไม่ได้รับคำตอบ"},
  {"IA Vesko ne répond pas pour le moment. Réessaie dans un instant.", "AI ของ Vesko ยังไม่ตอบในขณะนี้ โปรดลองใหม่อีกครู่"},
  {"L'IA n'a pas pu répondre.", "AI ตอบไม่ได้"},

  // Section titles of AI answers (the parser finds them again: distinct within a language)
  {"Structure", "โครงสร้าง"},
  {"Expression", "สำนวน"},
  {"Termes", "คำศัพท์"},
  {"Origine", "ที่มา"},
  {"Grammaire", "ไวยากรณ์"},
  {"Nuance", "ความแตกต่าง"},
  {"Sens littéral", "ความหมายตามตัวอักษร"},
  {"Sens", "ความหมาย"},
  {"Caractères", "ตัวอักษร"},
  {"Famille", "ตระกูลคำ"},
  {"Ici", "ในที่นี้"},
  {"Exemple", "ตัวอย่าง"},
  {"Phrase", "ประโยค"},
  {"Mot", "คำ"},
  {"Morceaux", "ส่วนย่อย"},

  // Languages named in French
  {"français", "ภาษาฝรั่งเศส"},
  {"anglais", "ภาษาอังกฤษ"},
  {"chinois simplifié", "ภาษาจีนตัวย่อ"},
  {"chinois traditionnel (Taïwan)", "ภาษาจีนตัวเต็ม (ไต้หวัน)"},
  {"russe", "ภาษารัสเซีย"},
  {"polonais", "ภาษาโปแลนด์"},
  {"thaï", "ภาษาไทย"},
  {"japonais", "ภาษาญี่ปุ่น"},

  // The popup's AI actions
  {"C'est quoi ?", "นี่คืออะไร"},
  {"Synonymes et contraires", "คำพ้องและคำตรงข้าม"},
  {"Décortiquer", "แยกวิเคราะห์"},
  {"Corriger", "แก้ไข"},
  {"Corriger une phrase", "แก้ไขประโยค"},
  {"Erreur ? Redemander", "ผิดใช่ไหม ถามใหม่"},
  {"Qu'est-ce qui ne va pas ? (facultatif)", "ผิดตรงไหน (ไม่บังคับ)"},
  {"La réponse est fausse : elle est oubliée (termes compris) et l'IA recommence avec un modèle plus solide.", "คำตอบผิด: ลบคำตอบนี้แล้ว (รวมถึงคำศัพท์) และ AI กำลังตอบใหม่ด้วยโมเดลที่เก่งกว่า"},
  {"Plus petits morceaux", "ส่วนย่อยที่สุด"},
  {"Garder ce morceau dans mes mots", "เก็บส่วนนี้ไว้ในคำของฉัน"},

  // AI usage
  {"Ce que tu consommes (estimation)", "ปริมาณที่คุณใช้ (โดยประมาณ)"},
  {"IA aujourd'hui", "AI วันนี้"},
  {"IA ce mois-ci", "AI เดือนนี้"},
  {"IA le mois dernier", "AI เดือนที่แล้ว"},
  {"Calculé avec les prix publics des fournisseurs, à partir de ce que chaque réponse indique. Le chiffre exact est sur leur site.", "คำนวณจากราคาที่ผู้ให้บริการประกาศ ตามข้อมูลที่แต่ละคำตอบระบุ ยอดที่แน่นอนดูได้บนเว็บไซต์ของผู้ให้บริการ"},
  {"rien pour l'instant", "ยังไม่มี"},
  {"(prix fondateur)", "(ราคาผู้ใช้รุ่นแรก)"},

  // AI models
  {"Réglages → IA → Modèles", "การตั้งค่า → AI → โมเดล"},
  {"Charger la liste", "โหลดรายการ"},
  {"Liste indisponible : vérifie la clé et la connexion.", "โหลดรายการไม่ได้ โปรดตรวจสอบคีย์และการเชื่อมต่อ"},
  {"Modèle IA mis à jour :", "อัปเดตโมเดล AI แล้ว:"},
  {"Ce modèle n'existe plus chez le fournisseur : choisis-en un autre dans Réglages → IA → Modèles.", "ผู้ให้บริการเลิกให้บริการโมเดลนี้แล้ว โปรดเลือกโมเดลอื่นใน การตั้งค่า → AI → โมเดล"},

  // Kept words
  {"Garder ce mot (export CSV / Anki dans les Réglages)", "เก็บคำนี้ไว้ (ส่งออกเป็น CSV / Anki ได้ใน การตั้งค่า)"},
  {"Encore une fois : compteur +1", "เจออีกครั้ง: ตัวนับ +1"},
  {"Retirer des mots enregistrés", "นำออกจากคำที่บันทึกไว้"},
  {"sens n° %d, gardé avec cette phrase", "ความหมายที่ %d เก็บไว้พร้อมประโยคนี้"},
  {"Je connais · À apprendre · Pas utile", "รู้แล้ว · ต้องเรียน · ไม่จำเป็น"},
  {"Je connais", "รู้แล้ว"},
  {"À apprendre", "ต้องเรียน"},
  {"Pas utile", "ไม่จำเป็น"},
  {"Un fichier de données était illisible ; une copie a été gardée :", "อ่านไฟล์ข้อมูลไม่ได้ จึงเก็บสำเนาไว้:"},

  // Review
  {"⚪ nouveau → 🔴 → 🟠 → 🟡 → 🟢 → 🔵 acquis", "⚪ ใหม่ → 🔴 → 🟠 → 🟡 → 🟢 → 🔵 จำได้แล้ว"},
  {"acquis", "จำได้แล้ว"},
  {"Nouveau : pas encore relu", "ใหม่: ยังไม่ได้ทบทวน"},
  {"Niveau %d sur %d", "ระดับ %d จาก %d"},
  {"jours", "วัน"},
  {"puis une fois par an (acquis)", "จากนั้นปีละครั้ง (จำได้แล้ว)"},
  {"à relire maintenant", "ทบทวนตอนนี้"},
  {"Une fois par an pour vérifier · prochaine : %@", "ทบทวนปีละครั้งเพื่อตรวจสอบ · ครั้งถัดไป: %@"},
  {"Prochaine révision : %@", "ทบทวนครั้งถัดไป: %@"},
  {"%d cartes attendent les jours suivants (40 anciennes + 10 nouvelles par jour au plus).", "มีการ์ดอีก %d ใบรอในวันถัดไป (วันละไม่เกิน 40 ใบเก่า + 10 ใบใหม่)"},
  {"Carte révisée en avance : 3, 4 et 5 gardent sa couleur (c'est le temps entre deux bonnes réponses qui la fait monter).", "การ์ดนี้ทบทวนก่อนกำหนด: 3, 4 และ 5 จะไม่เปลี่ยนสี (สีจะขึ้นระดับได้จากช่วงเวลาระหว่างการตอบถูกสองครั้ง)"},
  {"1 — raté : revient dans 10 minutes, une couleur en moins", "1 — ตอบไม่ได้: กลับมาใน 10 นาที ลดลงหนึ่งสี"},
  {"2 — pas très à l'aise : revient demain, une couleur en moins", "2 — ยังไม่ค่อยมั่นใจ: กลับมาพรุ่งนี้ ลดลงหนึ่งสี"},
  {"3 — moyen : même rythme", "3 — พอใช้: จังหวะเดิม"},
  {"4 — à l'aise : étape suivante", "4 — มั่นใจ: ขึ้นขั้นถัดไป"},
  {"5 — très à l'aise : deux étapes d'un coup", "5 — มั่นใจมาก: ข้ามสองขั้นในครั้งเดียว"},

  // Settings and the diagnostic log
  {"Automatique (langue du Mac)", "อัตโนมัติ (ตามภาษาของ Mac)"},
  {"Ouvrir debug.log", "เปิด debug.log"},
  {"Journal de diagnostic (debug.log)", "บันทึกการวินิจฉัย (debug.log)"},
  {"Journal des 3 dernières minutes", "บันทึก 3 นาทีล่าสุด"},
  {"Joindre ce que Vesko a fait ces 3 dernières minutes (peut contenir du texte lu à l'écran ; visible dans le mail avant l'envoi)", "แนบสิ่งที่ Vesko ทำใน 3 นาทีล่าสุด (อาจมีข้อความที่อ่านจากหน้าจอ และดูได้ในอีเมลก่อนส่ง)"},

  // The review session in a terminal
  {"Entrée : voir la réponse · q : quitter", "Enter: ดูคำตอบ · q: ออก"},
  {"Ta note (1 à 5) · q : quitter", "คะแนนของคุณ (1 ถึง 5) · q: ออก"},
  {"Rien à relire aujourd'hui.", "วันนี้ไม่มีอะไรต้องทบทวน"},
  {"Révision finie : %d cartes notées.", "ทบทวนเสร็จแล้ว: ให้คะแนนไป %d บัตร"},
  {"%d min", "%d นาที"},
  {"%d j", "%d วัน"},
  // The local model server that stands in for the on-device model
  {"L'IA locale n'est pas disponible : lance un serveur de modèle local, ou choisis Claude ou DeepSeek dans Réglages → IA.", "ใช้ AI ในเครื่องไม่ได้ โปรดเปิดเซิร์ฟเวอร์โมเดลในเครื่อง หรือเลือก Claude หรือ DeepSeek ใน การตั้งค่า → AI"},
  // The settings window
  {"Réglages", "การตั้งค่า"},
  {"Langues", "ภาษา"},
  {"IA", "AI"},
  {"Mots", "คำศัพท์"},
  {"Journal", "บันทึก"},
  {"Réglage non enregistré :", "บันทึกการตั้งค่าไม่ได้:"},
  {"Réglage inconnu.", "ไม่รู้จักการตั้งค่านี้"},
  {"Valeur d'un autre type que celui du réglage.", "ค่านี้มีชนิดไม่ตรงกับการตั้งค่า"},
  {"settings.json est illisible : il est laissé tel quel et rien n'est enregistré.", "อ่าน settings.json ไม่ได้ จึงปล่อยไว้ตามเดิมและไม่บันทึกอะไร"},
  {"settings.json ne peut pas être écrit.", "เขียน settings.json ไม่ได้"},
  {"Tes langues", "ภาษาของคุณ"},
  {"Chinois", "ภาษาจีน"},
  {"Japonais", "ภาษาญี่ปุ่น"},
  {"Thaï", "ภาษาไทย"},
  {"Français", "ภาษาฝรั่งเศส"},
  {"Anglais", "ภาษาอังกฤษ"},
  {"Russe", "ภาษารัสเซีย"},
  {"Polonais", "ภาษาโปแลนด์"},
  {"Pas étudiée", "ไม่ได้เรียน"},
  {"Langue prioritaire", "ภาษาที่ให้มาก่อน"},
  {"Mot en alphabet latin (français et anglais étudiés)", "คำที่เขียนด้วยอักษรละติน (เรียนทั้งฝรั่งเศสและอังกฤษ)"},
  {"Caractères chinois seuls (chinois et japonais étudiés)", "มีแต่อักษรจีน (เรียนทั้งจีนและญี่ปุ่น)"},
  {"Lecture", "การอ่าน"},
  {"Touche à maintenir", "ปุ่มที่ต้องกดค้าง"},
  {"Alt", "Alt"},
  {"Ctrl", "Ctrl"},
  {"Maj", "Shift"},
  {"Super", "Super"},
  {"Délai avant lecture", "เวลารอก่อนอ่าน"},
  {"Langue de l'interface", "ภาษาของหน้าจอ"},
  {"Fournisseur", "ผู้ให้บริการ"},
  {"IA utilisée", "AI ที่ใช้"},
  {"IA de secours", "AI สำรอง"},
  {"Aucune", "ไม่มี"},
  {"En Chine, demander d'abord l'IA de secours", "เมื่ออยู่ในจีน ให้ถาม AI สำรองก่อน"},
  {"Adresse du serveur de modèle local", "ที่อยู่เซิร์ฟเวอร์โมเดลในเครื่อง"},
  {"L'adresse commence par http:// ou https://.", "ที่อยู่ต้องขึ้นต้นด้วย http:// หรือ https://"},
  {"Il manque le nom du serveur, par exemple http://127.0.0.1:11434/v1.", "ยังไม่มีชื่อเซิร์ฟเวอร์ เช่น http://127.0.0.1:11434/v1"},
  {"Clés", "คีย์"},
  {"Colle ta clé ici", "วางคีย์ของคุณที่นี่"},
  {"Enregistrer", "บันทึก"},
  {"Effacer", "ลบ"},
  {"Un moment…", "สักครู่…"},
  {"Clé enregistrée dans le trousseau.", "บันทึกคีย์ไว้ในพวงกุญแจแล้ว"},
  {"Clé lue dans la variable d'environnement %@.", "อ่านคีย์จากตัวแปรสภาพแวดล้อม %@"},
  {"Pas de clé.", "ไม่มีคีย์"},
  {"Le trousseau ne répond pas :", "พวงกุญแจไม่ตอบสนอง:"},
  {"Le trousseau n'a pas pu garder la clé :", "พวงกุญแจเก็บคีย์ไม่ได้:"},
  {"Clé enregistrée.", "บันทึกคีย์แล้ว"},
  {"Clé effacée.", "ลบคีย์แล้ว"},
  {"Modèles", "โมเดล"},
  {"Chargement…", "กำลังโหลด…"},
  {"%d modèles", "%d โมเดล"},
  {"Exporter pour Anki", "ส่งออกไปยัง Anki"},
  {"Exporter en CSV…", "ส่งออกเป็น CSV…"},
  {"Exporter en TSV…", "ส่งออกเป็น TSV…"},
  {"Exporter les mots gardés", "ส่งออกคำที่เก็บไว้"},
  {"Fichier CSV", "ไฟล์ CSV"},
  {"Fichier TSV", "ไฟล์ TSV"},
  {"Mots gardés : %d", "คำที่เก็บไว้: %d"},
  {"%d mots écrits dans %@", "เขียน %d คำลงใน %@"},
  {"Export impossible :", "ส่งออกไม่ได้:"},
  {"Dossier des données", "โฟลเดอร์ข้อมูล"},
  {"Ouvrir le dossier", "เปิดโฟลเดอร์"},
  {"Aucun programme n'a pu l'ouvrir.", "ไม่มีโปรแกรมใดเปิดได้"},
  {"debug.log n'existe pas encore : allume le journal de diagnostic, puis survole un mot.", "ยังไม่มี debug.log เปิดบันทึกวินิจฉัยก่อน แล้วชี้เมาส์ที่คำ"},
  // The review window
  {"Révision", "ทบทวน"},
  {"Montrer la réponse", "แสดงคำตอบ"},
  {"Réviser en avance", "ทบทวนล่วงหน้า"},
  {"Espace ou Entrée : montrer la réponse", "Space หรือ Enter: แสดงคำตอบ"},
  {"Touches 1 à 5 : ta note", "ปุ่ม 1 ถึง 5: คะแนนของคุณ"},

  // The bubble
  {"élision : « %@ » devant ce mot", "การละเสียง: “%@” หน้าคำนี้"},
  {"Expliquer avec l'IA", "อธิบายด้วย AI"},
  {"Phrase…", "ประโยค…"},
  {"Traduire", "แปล"},
  {"L'IA réfléchit…", "AI กำลังคิด…"},
  {"Gardé %d fois", "เก็บไว้ %d ครั้ง"},
  {"Redemander", "ถามใหม่"},
  // The desktop app's status item
  {"Vesko ne joint pas le bus d'accessibilité : le texte des autres programmes reste illisible.", "Vesko เชื่อมต่อบัสการช่วยการเข้าถึงไม่ได้ จึงอ่านข้อความของโปรแกรมอื่นไม่ได้"},
  {"Lance at-spi2-core, ou ouvre une session de bureau.", "เปิด at-spi2-core หรือเข้าสู่ระบบเซสชันเดสก์ท็อป"},
  {"Session Wayland : Vesko ne voit ni le pointeur ni l'écran des autres programmes.", "เซสชัน Wayland: Vesko มองไม่เห็นทั้งตัวชี้เมาส์และหน้าจอของโปรแกรมอื่น"},
  {"Ouvre une session X11 (Xorg) pour lire au survol.", "เข้าสู่ระบบเซสชัน X11 (Xorg) เพื่ออ่านเมื่อวางเมาส์"},
  {"Alt+X est déjà pris par un autre programme.", "Alt+X ถูกโปรแกรมอื่นใช้อยู่แล้ว"},
  {"Libère Alt+X dans cet autre programme, puis relance Vesko.", "ปล่อย Alt+X ในโปรแกรมนั้น แล้วเปิด Vesko ใหม่"},
  {"Réglages…", "การตั้งค่า…"},
  {"Révision (%d)", "ทบทวน (%d)"},
  {"Quitter Vesko", "ออกจาก Vesko"},
  {"chargement du dictionnaire…", "กำลังโหลดพจนานุกรม…"},
};
// clang-format on

}  // namespace

std::span<const LocRow> thai() {
  return kRows;
}

}  // namespace vesko::loc_rows
