var modTitle = "Lumora Help";
var objLessonModule = new objLesson(window.modTitle);
var copyright = "© 2025 Lumora";
var useSCORM = false;
objLessonModule.addPage(objLessonModule.pages.length, "Welcome to Lumora");
objLessonModule.addPage(objLessonModule.pages.length, "Creating a module");
objLessonModule.addPage(objLessonModule.pages.length, "Editing pages and questions");
objLessonModule.addPage(objLessonModule.pages.length, "Saving for SCORM or not");
objLessonModule.addPage(objLessonModule.pages.length, "Previewing");

var intNumPages = objLessonModule.pages.length;
var topPage = intNumPages - 1;
