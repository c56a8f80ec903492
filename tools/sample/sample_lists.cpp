#include "sample/sample_entry.h"

namespace sample {

const wchar_t* const kCategories[kCategoryCount] = {
    L"Business", L"Customers", L"Family",   L"Finance", L"Health",    L"Home",
    L"Ideas 💡",  L"Büro",      L"Projects", L"学习",    L"Suppliers", L"Ταξίδια",
};

const Contact kContacts[kContactCount] = {
    {L"Abernathy, Joan", L"Joan Abernathy", L"Tollgate Printing"},
    {L"Achterberg, Sönke", L"Sönke Achterberg", L"Nordlicht Werft"},
    {L"Alvarado, Inés", L"Inés Alvarado", L"Casa Miralmar"},
    {L"Ångman, Elsa", L"Elsa Ångman", L"Björkdal Möbler"},
    {L"Barlow, Peter", L"Peter Barlow", L"Barlow and Daughters"},
    {L"Bäumler, Käthe", L"Käthe Bäumler", L"Süßwaren Bäumler"},
    {L"Çelikay, Deniz", L"Deniz Çelikay", L"Anadol Tekstil"},
    {L"Corrigan, Maeve", L"Maeve Corrigan", L"Ballyfern Dairy"},
    {L"Delacourt, Émile", L"Émile Delacourt", L"Imprimerie du Pont"},
    {L"Dunmore, Alice", L"Alice Dunmore", L""},
    {L"Ekholm, Åsa", L"Åsa Ekholm", L"Skärgårdsbåtar"},
    {L"Fairweather, Tom", L"Tom Fairweather", L"Fairweather Roofing"},
    {L"Fenchurch, Rosalind", L"Rosalind Fenchurch", L"Larkhill School"},
    {L"Gößwein, Jürgen", L"Jürgen Gößwein", L"Maschinenbau Gößwein"},
    {L"Hallström, Ulf", L"Ulf Hallström", L"Björkdal Möbler"},
    {L"Iversen, Søren", L"Søren Iversen", L"Iversen Fisk"},
    {L"Jankauskė, Rūta", L"Rūta Jankauskė", L"Gintaro Namai"},
    {L"Kettleworth, Bob", L"Bob Kettleworth", L"Kettleworth Garage"},
    {L"Łęcka, Żaneta", L"Żaneta Łęcka", L"Drukarnia Wiślana"},
    {L"Marchetti, Lucia", L"Lucia Marchetti", L"Vetreria Marchetti"},
    {L"Müller-Öhl, Änne", L"Änne Müller-Öhl", L"Praxis Dr. Müller-Öhl"},
    {L"Novotný, Jiří", L"Jiří Novotný", L"Pila Novotný"},
    {L"O'Shaughnessy, Finn", L"Finn O'Shaughnessy", L"Ballyfern Dairy"},
    {L"Papadimitrakis, Nikos", L"Nikos Papadimitrakis", L"Aigaio Shipping"},
    {L"Pritchard, Dylan", L"Dylan Pritchard", L""},
    {L"Quist, Marieke", L"Marieke Quist", L"Bloembollen Quist"},
    {L"Ravensdale, Harriet", L"Harriet Ravensdale", L"Ravensdale Solicitors"},
    {L"Szöllősy, Ildikó", L"Ildikó Szöllősy", L"Tiszapart Borászat"},
    {L"Thistlewood, Grace", L"Grace Thistlewood", L""},
    {L"Umberleigh, Simon", L"Simon Umberleigh", L"Larkhill School"},
    {L"Vashchenko, Olena", L"Olena Vashchenko", L"Dnipro Garden Tools"},
    {L"Wexcombe, Martin 🎸", L"Martin", L"The Wexcombe Four"},
    {L"Zirngiebl, Florian", L"Florian Zirngiebl", L"Schreinerei Zirngiebl"},
    {L"Αργυρίου, Ελένη", L"Ελένη Αργυρίου", L"Βιβλιοπωλείο Αργυρίου"},
    {L"Σταματόπουλος, Γιώργος", L"Γιώργος Σταματόπουλος", L"Ναυτιλιακή Σταμάτος"},
    {L"Ковалёва, Дарья", L"Дарья Ковалёва", L"Северный Чай"},
    {L"王小溪", L"王小溪", L"溪桥书店"},
    {L"陳靜蘭", L"陳靜蘭", L"蘭亭茶行"},
    {L"高橋 みのり", L"高橋さん", L"みのり工房"},
    {L"Gran & Grandpa 👵👴", L"Gran", L""},
};

} // namespace sample
