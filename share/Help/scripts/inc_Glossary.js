TermID = arrDefObjects.length;
arrDefObjects[TermID] = new objGlossary(TermID);
arrDefObjects[TermID].term = "Glossary";
arrDefObjects[TermID].definition = "The list of terms of a lesson with their definitions; a term link on a page shows one of them.";

TermID = arrDefObjects.length;
arrDefObjects[TermID] = new objGlossary(TermID);
arrDefObjects[TermID].term = "Term link";
arrDefObjects[TermID].definition = "A link in a page that opens the definition of a glossary term in a pop-up.";

