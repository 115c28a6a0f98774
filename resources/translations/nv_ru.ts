<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU">
<context>
    <name>BaseInfoPopup</name>
    <message>
        <source>Save</source>
        <translation>Сохранить</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Отмена</translation>
    </message>
</context>
<context>
    <name>ContextInfoPopup</name>
    <message>
        <source>New context</source>
        <translation>Новый контекст</translation>
    </message>
    <message>
        <source>Please input context name</source>
        <translation>Введите название контекста</translation>
    </message>
</context>
<context>
    <name>ContextsPage</name>
    <message>
        <source>Contexts</source>
        <translation>Контексты</translation>
    </message>
    <message>
        <source>No contexts here yet.</source>
        <translation>Здесь пока нет контекстов.</translation>
    </message>
    <message>
        <source>Delete Context</source>
        <translation>Удалить контекст</translation>
    </message>
    <message>
        <source>Are you sure you want to delete this context?</source>
        <translation>Вы уверены, что хотите удалить этот контекст?</translation>
    </message>
    <message>
        <source>Add nested context</source>
        <translation>Добавить вложенный контекст</translation>
    </message>
    <message>
        <source>Add Context</source>
        <translation>Добавить контекст</translation>
    </message>
    <message>
        <source>Edit Context</source>
        <translation>Редактировать контекст</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Вырезать</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Копировать</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Вставить</translation>
    </message>
    <message>
        <source>One can paste only tasks or contexts into this list.</source>
        <translation>В этот список можно вставлять только задачи или контексты.</translation>
    </message>
</context>
<context>
    <name>DailyPlanPage</name>
    <message>
        <source>Due</source>
        <translation>Срок</translation>
    </message>
    <message>
        <source>Here you will find your daily task lists</source>
        <translation>Здесь будут ваши списки задач на день</translation>
    </message>
    <message>
        <source>Press + to add a task for Today</source>
        <translation>Нажмите +, чтобы добавить задачу на сегодня</translation>
    </message>
    <message>
        <source>No tasks for this day yet</source>
        <translation>На этот день задач пока нет</translation>
    </message>
    <message>
        <source>Press + to add a task to this date</source>
        <translation>Нажмите +, чтобы добавить задачу на эту дату</translation>
    </message>
    <message>
        <source>Quick Date Selection</source>
        <translation>Быстрый выбор даты</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Сегодня</translation>
    </message>
    <message>
        <source>Tomorrow</source>
        <translation>Завтра</translation>
    </message>
    <message>
        <source>One can paste only tasks or projects into this list.</source>
        <translation>В этот список можно вставлять только задачи или проекты.</translation>
    </message>
</context>
<context>
    <name>DateTimeEditPopup</name>
    <message>
        <source>No Date</source>
        <translation>Без даты</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Сегодня</translation>
    </message>
    <message>
        <source>Tomorrow</source>
        <translation>Завтра</translation>
    </message>
</context>
<context>
    <name>FavoritesPage</name>
    <message>
        <source>Favorites</source>
        <translation>Избранное</translation>
    </message>
    <message>
        <source>The tasks, projects and contexts you mark with a star, gathered in one place.</source>
        <translation>Задачи, проекты и контексты, отмеченные звёздочкой, собраны в одном месте.</translation>
    </message>
</context>
<context>
    <name>FolderInfoPopup</name>
    <message>
        <source>New folder</source>
        <translation>Новая папка</translation>
    </message>
    <message>
        <source>Please input folder name</source>
        <translation>Введите название папки</translation>
    </message>
</context>
<context>
    <name>Helper</name>
    <message>
        <source>Today</source>
        <translation>Сегодня</translation>
    </message>
    <message>
        <source>Tomorrow</source>
        <translation>Завтра</translation>
    </message>
    <message>
        <source>Yesterday</source>
        <translation>Вчера</translation>
    </message>
</context>
<context>
    <name>ListPage</name>
    <message>
        <source>This operation will remove all instances of this repetitive task from all dates. Are you sure you want to proceed?</source>
        <translation>Эта операция удалит все повторения этой задачи на всех датах. Продолжить?</translation>
    </message>
    <message>
        <source>Are you sure you want to delete this project and all of its tasks?</source>
        <translation>Удалить этот проект и все его задачи?</translation>
    </message>
    <message>
        <source>Are you sure you want to delete this folder and all of its content?</source>
        <translation>Удалить эту папку и всё её содержимое?</translation>
    </message>
    <message>
        <source>Are you sure you want to delete this context?</source>
        <translation>Удалить этот контекст?</translation>
    </message>
    <message>
        <source>Are you sure you want to delete this task?</source>
        <translation>Удалить эту задачу?</translation>
    </message>
    <message>
        <source>Delete Project</source>
        <translation>Удалить проект</translation>
    </message>
    <message>
        <source>Delete Folder</source>
        <translation>Удалить папку</translation>
    </message>
    <message>
        <source>Delete Context</source>
        <translation>Удалить контекст</translation>
    </message>
    <message>
        <source>Delete Task</source>
        <translation>Удалить задачу</translation>
    </message>
    <message>
        <source>Delete objects</source>
        <translation>Удалить объекты</translation>
    </message>
    <message>
        <source>Are you sure you want to delete all these objects?</source>
        <translation>Удалить все эти объекты?</translation>
    </message>
</context>
<context>
    <name>ListPlaceholder</name>
    <message>
        <source>Learn more</source>
        <translation>Подробнее</translation>
    </message>
</context>
<context>
    <name>MessagePopup</name>
    <message>
        <source>Yes</source>
        <translation>Да</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Отмена</translation>
    </message>
</context>
<context>
    <name>MethodPage</name>
    <message>
        <source>Method</source>
        <translation>Методика</translation>
    </message>
    <message>
        <source>A short guide to the method behind Norvel: capture, sort, plan the day and do.</source>
        <translation>Краткое руководство по методике Norvel: записывайте, распределяйте, планируйте день и действуйте.</translation>
    </message>
</context>
<context>
    <name>NorvelBoxPage</name>
    <message>
        <source>Norvel Box</source>
        <translation>Norvel Box</translation>
    </message>
    <message>
        <source>One can paste only tasks into this list.</source>
        <translation>В этот список можно вставлять только задачи.</translation>
    </message>
    <message>
        <source>Press + to add a task</source>
        <translation>Нажмите +, чтобы добавить задачу</translation>
    </message>
    <message>
        <source>Norvel Box is a special inbox for incoming tasks, quick notes and spontaneous ideas that appear during the day</source>
        <translation>Norvel Box — особый ящик для входящих задач, быстрых заметок и внезапных идей, которые появляются в течение дня</translation>
    </message>
    <message>
        <source>Press + to add a task into Norvel Box</source>
        <translation>Нажмите +, чтобы добавить задачу в Norvel Box</translation>
    </message>
    <message>
        <source>Sort</source>
        <translation>Сортировка</translation>
    </message>
    <message>
        <source>Capture a task and press Return</source>
        <translation>Запишите задачу и нажмите Enter</translation>
    </message>
</context>
<context>
    <name>NvMenuBar</name>
    <message>
        <source>File</source>
        <translation>Файл</translation>
    </message>
    <message>
        <source>Recent Projects</source>
        <translation>Недавние проекты</translation>
    </message>
    <message>
        <source>Norvel Box</source>
        <translation>Norvel Box</translation>
    </message>
    <message>
        <source>Sync</source>
        <translation>Синхронизировать</translation>
    </message>
    <message>
        <source>Settings...</source>
        <translation>Настройки...</translation>
    </message>
    <message>
        <source>Close Window</source>
        <translation>Закрыть окно</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Правка</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Вырезать</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Копировать</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Вставить</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Выделить всё</translation>
    </message>
    <message>
        <source>View</source>
        <translation>Вид</translation>
    </message>
    <message>
        <source>Go to</source>
        <translation>Перейти</translation>
    </message>
    <message>
        <source>Daily Plan</source>
        <translation>План на день</translation>
    </message>
    <message>
        <source>Projects</source>
        <translation>Проекты</translation>
    </message>
    <message>
        <source>Contexts</source>
        <translation>Контексты</translation>
    </message>
    <message>
        <source>Show Navigation Panel</source>
        <translation>Показать панель навигации</translation>
    </message>
    <message>
        <source>Hide Navigation Panel</source>
        <translation>Скрыть панель навигации</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Справка</translation>
    </message>
    <message>
        <source>Open our Website</source>
        <translation>Открыть наш сайт</translation>
    </message>
    <message>
        <source>Report an Error...</source>
        <translation>Сообщить об ошибке...</translation>
    </message>
    <message>
        <source>Norvel for Linux v%1</source>
        <translation>Norvel для Linux v%1</translation>
    </message>
    <message>
        <source>Our blog</source>
        <translation>Наш блог</translation>
    </message>
    <message>
        <source>Norvel on VK</source>
        <translation>Norvel ВКонтакте</translation>
    </message>
    <message>
        <source>Norvel on Instagram</source>
        <translation>Norvel в Instagram</translation>
    </message>
    <message>
        <source>Norvel on Facebook</source>
        <translation>Norvel в Facebook</translation>
    </message>
    <message>
        <source>Norvel on Twitter</source>
        <translation>Norvel в Twitter</translation>
    </message>
    <message>
        <source>Subscribe to our news</source>
        <translation>Подписаться на новости</translation>
    </message>
    <message>
        <source>Terms of Use</source>
        <translation>Условия использования</translation>
    </message>
    <message>
        <source>Privacy Policy</source>
        <translation>Политика конфиденциальности</translation>
    </message>
    <message>
        <source>Create</source>
        <translation>Создать</translation>
    </message>
    <message>
        <source>Add Task to Norvel Box...</source>
        <translation>Добавить задачу в Norvel Box...</translation>
    </message>
    <message>
        <source>Add New Task...</source>
        <translation>Новая задача...</translation>
    </message>
</context>
<context>
    <name>NvStatusBar</name>
    <message>
        <source>Sync in progress…</source>
        <translation>Идёт синхронизация…</translation>
    </message>
    <message>
        <source>Sync hasn&apos;t been performed yet</source>
        <translation>Синхронизация ещё не выполнялась</translation>
    </message>
    <message>
        <source>Last synced: today %1</source>
        <translation>Последняя синхронизация: сегодня в %1</translation>
    </message>
    <message>
        <source>Last synced: %1</source>
        <translation>Последняя синхронизация: %1</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>Восстановить</translation>
    </message>
</context>
<context>
    <name>NvToolBar</name>
    <message>
        <source>Back</source>
        <translation>Назад</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>Вперёд</translation>
    </message>
    <message>
        <source>Show or hide the navigation panel</source>
        <translation>Показать или скрыть панель навигации</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Добавить</translation>
    </message>
    <message>
        <source>Sync</source>
        <translation>Синхронизировать</translation>
    </message>
    <message>
        <source>Trash</source>
        <translation>Корзина</translation>
    </message>
</context>
<context>
    <name>ObjectClipboard</name>
    <message>
        <source>Paste error</source>
        <translation>Ошибка вставки</translation>
    </message>
</context>
<context>
    <name>ObjectInfoContent</name>
    <message>
        <source>Name</source>
        <translation>Название</translation>
    </message>
    <message>
        <source>Enter name</source>
        <translation>Введите название</translation>
    </message>
    <message>
        <source>Context</source>
        <translation>Контекст</translation>
    </message>
    <message>
        <source>No context</source>
        <translation>Без контекста</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Начало</translation>
    </message>
    <message>
        <source>Due</source>
        <translation>Срок</translation>
    </message>
    <message>
        <source>Remove from Favorites</source>
        <translation>Убрать из избранного</translation>
    </message>
    <message>
        <source>Add to Favorites</source>
        <translation>Добавить в избранное</translation>
    </message>
    <message>
        <source>Optional memo</source>
        <translation>Заметка (необязательно)</translation>
    </message>
    <message>
        <source>Enter memo</source>
        <translation>Введите заметку</translation>
    </message>
</context>
<context>
    <name>ObjectInfoPopup</name>
    <message>
        <source>Save Error</source>
        <translation>Ошибка сохранения</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Редактировать</translation>
    </message>
</context>
<context>
    <name>ObjectListDelegate</name>
    <message>
        <source>Restore</source>
        <translation>Восстановить</translation>
    </message>
    <message numerus="yes">
        <source>%n day(s)</source>
        <translation>
            <numerusform>%n день</numerusform>
            <numerusform>%n дня</numerusform>
            <numerusform>%n дней</numerusform>
        </translation>
    </message>
    <message>
        <source>Mark as not complete</source>
        <translation>Отметить как невыполненный</translation>
    </message>
    <message>
        <source>Mark as completed</source>
        <translation>Отметить как выполненный</translation>
    </message>
    <message>
        <source>Remove from Favorites</source>
        <translation>Убрать из избранного</translation>
    </message>
    <message>
        <source>Add to Favorites</source>
        <translation>Добавить в избранное</translation>
    </message>
    <message>
        <source>Add nested folder</source>
        <translation>Добавить вложенную папку</translation>
    </message>
    <message>
        <source>Add a project to this folder</source>
        <translation>Добавить проект в эту папку</translation>
    </message>
    <message>
        <source>Add a task to this project</source>
        <translation>Добавить задачу в этот проект</translation>
    </message>
    <message>
        <source>Add nested context</source>
        <translation>Добавить вложенный контекст</translation>
    </message>
    <message>
        <source>Edit Folder</source>
        <translation>Редактировать папку</translation>
    </message>
    <message>
        <source>Edit Project</source>
        <translation>Редактировать проект</translation>
    </message>
    <message>
        <source>Edit Context</source>
        <translation>Редактировать контекст</translation>
    </message>
    <message>
        <source>Delete selected items</source>
        <translation>Удалить выбранные</translation>
    </message>
    <message>
        <source>Delete Folder</source>
        <translation>Удалить папку</translation>
    </message>
    <message>
        <source>Delete Project</source>
        <translation>Удалить проект</translation>
    </message>
    <message>
        <source>Delete Context</source>
        <translation>Удалить контекст</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Вырезать</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Копировать</translation>
    </message>
</context>
<context>
    <name>ObjectListPage</name>
    <message numerus="yes">
        <source>%n task(s)</source>
        <translation>
            <numerusform>%n задача</numerusform>
            <numerusform>%n задачи</numerusform>
            <numerusform>%n задач</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n project(s)</source>
        <translation>
            <numerusform>%n проект</numerusform>
            <numerusform>%n проекта</numerusform>
            <numerusform>%n проектов</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Also available: %n task(s)</source>
        <translation>
            <numerusform>Также доступна: %n задача</numerusform>
            <numerusform>Также доступны: %n задачи</numerusform>
            <numerusform>Также доступно: %n задач</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Also available: %n project(s)</source>
        <translation>
            <numerusform>Также доступен: %n проект</numerusform>
            <numerusform>Также доступны: %n проекта</numerusform>
            <numerusform>Также доступно: %n проектов</numerusform>
        </translation>
    </message>
    <message>
        <source>Completed</source>
        <translation>Выполненные</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Вставить</translation>
    </message>
    <message>
        <source>Sort</source>
        <translation>Сортировка</translation>
    </message>
    <message>
        <source>Press + to add a task to this date</source>
        <translation>Нажмите +, чтобы добавить задачу на эту дату</translation>
    </message>
</context>
<context>
    <name>ObjectUpdater</name>
    <message>
        <source>You completed a task</source>
        <translation>Вы выполнили задачу</translation>
    </message>
    <message>
        <source>You completed a project</source>
        <translation>Вы выполнили проект</translation>
    </message>
</context>
<context>
    <name>OneDateFragment</name>
    <message>
        <source>Date</source>
        <translation>Дата</translation>
    </message>
    <message>
        <source>Start time</source>
        <translation>Время начала</translation>
    </message>
    <message>
        <source>End time</source>
        <translation>Время окончания</translation>
    </message>
</context>
<context>
    <name>PopupHelper</name>
    <message>
        <source>Ok</source>
        <translation>Ок</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message numerus="yes">
        <source>You deleted %n item(s)</source>
        <translation>
            <numerusform>Вы удалили %n объект</numerusform>
            <numerusform>Вы удалили %n объекта</numerusform>
            <numerusform>Вы удалили %n объектов</numerusform>
        </translation>
    </message>
    <message>
        <source>You deleted a folder</source>
        <translation>Вы удалили папку</translation>
    </message>
    <message>
        <source>You deleted a task</source>
        <translation>Вы удалили задачу</translation>
    </message>
    <message>
        <source>You deleted a project</source>
        <translation>Вы удалили проект</translation>
    </message>
    <message>
        <source>You deleted a context</source>
        <translation>Вы удалили контекст</translation>
    </message>
</context>
<context>
    <name>ProjectHandler</name>
    <message>
        <source>Norvel Box</source>
        <translation>Norvel Box</translation>
    </message>
    <message>
        <source>One Step Actions</source>
        <translation>Одношаговые действия</translation>
    </message>
</context>
<context>
    <name>ProjectInfoPopup</name>
    <message>
        <source>New project</source>
        <translation>Новый проект</translation>
    </message>
    <message>
        <source>Please input project name</source>
        <translation>Введите название проекта</translation>
    </message>
</context>
<context>
    <name>ProjectsPage</name>
    <message>
        <source>Projects</source>
        <translation>Проекты</translation>
    </message>
    <message>
        <source>No folders or projects here yet.</source>
        <translation>Здесь пока нет папок и проектов.</translation>
    </message>
    <message>
        <source>Delete Folder</source>
        <translation>Удалить папку</translation>
    </message>
    <message>
        <source>Delete Project</source>
        <translation>Удалить проект</translation>
    </message>
    <message>
        <source>Are you sure you want to delete this folder and all of its content?</source>
        <translation>Вы уверены, что хотите удалить эту папку со всем её содержимым?</translation>
    </message>
    <message>
        <source>Are you sure you want to delete this project and all of its tasks?</source>
        <translation>Вы уверены, что хотите удалить этот проект и все его задачи?</translation>
    </message>
    <message>
        <source>Add nested folder</source>
        <translation>Добавить вложенную папку</translation>
    </message>
    <message>
        <source>Add Folder</source>
        <translation>Добавить папку</translation>
    </message>
    <message>
        <source>Add a project to this folder</source>
        <translation>Добавить проект в эту папку</translation>
    </message>
    <message>
        <source>Add Project</source>
        <translation>Добавить проект</translation>
    </message>
    <message>
        <source>Mark as not complete</source>
        <translation>Отметить как невыполненный</translation>
    </message>
    <message>
        <source>Mark as completed</source>
        <translation>Отметить как выполненный</translation>
    </message>
    <message>
        <source>Add a task to this project</source>
        <translation>Добавить задачу в этот проект</translation>
    </message>
    <message>
        <source>Edit Folder</source>
        <translation>Редактировать папку</translation>
    </message>
    <message>
        <source>Edit Project</source>
        <translation>Редактировать проект</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Вырезать</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Копировать</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Вставить</translation>
    </message>
    <message>
        <source>One can paste only tasks into this list.</source>
        <translation>В этот список можно вставлять только задачи.</translation>
    </message>
    <message>
        <source>One can paste only folders or projects into this list.</source>
        <translation>В этот список можно вставлять только папки или проекты.</translation>
    </message>
</context>
<context>
    <name>ProxyAuthDialog</name>
    <message>
        <source>Remember my password</source>
        <translation>Запомнить пароль</translation>
    </message>
    <message>
        <source>Authentication Required</source>
        <translation>Требуется аутентификация</translation>
    </message>
    <message>
        <source>Username:</source>
        <translation>Имя пользователя:</translation>
    </message>
    <message>
        <source>Password:</source>
        <translation>Пароль:</translation>
    </message>
    <message>
        <source>Connect to proxy %1 using:</source>
        <translation>Подключиться к прокси-серверу %1 с данными:</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>5 minutes</source>
        <translation>5 минут</translation>
    </message>
    <message>
        <source>15 minutes</source>
        <translation>15 минут</translation>
    </message>
    <message>
        <source>30 minutes</source>
        <translation>30 минут</translation>
    </message>
    <message>
        <source>1 hour</source>
        <translation>1 час</translation>
    </message>
    <message>
        <source>2 hours</source>
        <translation>2 часа</translation>
    </message>
    <message>
        <source>3 hours</source>
        <translation>3 часа</translation>
    </message>
    <message>
        <source>1 day</source>
        <translation>1 день</translation>
    </message>
    <message>
        <source>2 days</source>
        <translation>2 дня</translation>
    </message>
    <message>
        <source>Task is active</source>
        <translation>Задача стала активной</translation>
    </message>
    <message>
        <source>Task is overdue</source>
        <translation>Задача просрочена</translation>
    </message>
    <message>
        <source>%1 before start</source>
        <translation>За %1 до начала</translation>
    </message>
    <message>
        <source>%1 before deadline</source>
        <translation>За %1 до срока</translation>
    </message>
    <message>
        <source>Don&apos;t forget about this task</source>
        <translation>Не забудьте об этой задаче</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Предупреждение</translation>
    </message>
    <message>
        <source>The app version you are using is too old. In order to perform sync, please update the app.</source>
        <translation>Версия приложения устарела. Чтобы синхронизировать данные, обновите приложение.</translation>
    </message>
    <message>
        <source>Login Error</source>
        <translation>Ошибка входа</translation>
    </message>
    <message>
        <source>The email you have entered does not belong to any account.</source>
        <translation>Введённый адрес электронной почты не принадлежит ни одной учётной записи.</translation>
    </message>
    <message>
        <source>The password you have entered is incorrect.</source>
        <translation>Введён неверный пароль.</translation>
    </message>
    <message>
        <source>Registration Error</source>
        <translation>Ошибка регистрации</translation>
    </message>
    <message>
        <source>A user with this email already exists.</source>
        <translation>Пользователь с таким адресом электронной почты уже существует.</translation>
    </message>
    <message>
        <source>Internal Server Error</source>
        <translation>Внутренняя ошибка сервера</translation>
    </message>
    <message>
        <source>We are sorry. The server encountered an internal error and was unable to complete your request. Please try again.</source>
        <translation>Приносим извинения. На сервере произошла внутренняя ошибка, и запрос не удалось выполнить. Попробуйте ещё раз.</translation>
    </message>
    <message>
        <source>Application Error</source>
        <translation>Ошибка приложения</translation>
    </message>
    <message>
        <source>Unknown error occurred during logout. Contact the application&apos;s support team for more information.</source>
        <translation>При выходе из учётной записи произошла неизвестная ошибка. Обратитесь в службу поддержки приложения.</translation>
    </message>
    <message>
        <source>Sync Error</source>
        <translation>Ошибка синхронизации</translation>
    </message>
    <message>
        <source>Sync error (code %1). Please logout from your account and login again to resolve the issue.</source>
        <translation>Ошибка синхронизации (код %1). Выйдите из учётной записи и войдите снова, чтобы устранить проблему.</translation>
    </message>
    <message>
        <source>Change Password Error</source>
        <translation>Ошибка смены пароля</translation>
    </message>
    <message>
        <source>Your current password is incorrect, please check.</source>
        <translation>Текущий пароль введён неверно, проверьте его.</translation>
    </message>
</context>
<context>
    <name>ReminderFormatHelper</name>
    <message>
        <source>5 min before %1</source>
        <translation>За 5 мин до %1</translation>
    </message>
    <message>
        <source>15 min before %1</source>
        <translation>За 15 мин до %1</translation>
    </message>
    <message>
        <source>30 min before %1</source>
        <translation>За 30 мин до %1</translation>
    </message>
    <message>
        <source>1 hour before %1</source>
        <translation>За 1 час до %1</translation>
    </message>
    <message>
        <source>2 hours before %1</source>
        <translation>За 2 часа до %1</translation>
    </message>
    <message>
        <source>3 hours before %1</source>
        <translation>За 3 часа до %1</translation>
    </message>
    <message>
        <source>1 day before %1</source>
        <translation>За 1 день до %1</translation>
    </message>
    <message>
        <source>2 days before %1</source>
        <translation>За 2 дня до %1</translation>
    </message>
    <message>
        <source>When task is active</source>
        <translation>Когда задача станет активной</translation>
    </message>
    <message>
        <source>When task is overdue</source>
        <translation>Когда задача станет просроченной</translation>
    </message>
    <message>
        <source>start</source>
        <translation>начала</translation>
    </message>
    <message>
        <source>deadline</source>
        <translation>срока</translation>
    </message>
</context>
<context>
    <name>RepetitionFormatHelper</name>
    <message>
        <source>Monday</source>
        <comment>повторения в превью</comment>
        <translation>понедельникам</translation>
    </message>
    <message>
        <source>Tuesday</source>
        <comment>повторения в превью</comment>
        <translation>вторникам</translation>
    </message>
    <message>
        <source>Wednesday</source>
        <comment>повторения в превью</comment>
        <translation>средам</translation>
    </message>
    <message>
        <source>Thursday</source>
        <comment>повторения в превью</comment>
        <translation>четвергам</translation>
    </message>
    <message>
        <source>Friday</source>
        <comment>повторения в превью</comment>
        <translation>пятницам</translation>
    </message>
    <message>
        <source>Saturday</source>
        <comment>повторения в превью</comment>
        <translation>субботам</translation>
    </message>
    <message>
        <source>Sunday</source>
        <comment>повторения в превью</comment>
        <translation>воскресеньям</translation>
    </message>
    <message>
        <source>on Monday</source>
        <comment>следующая дата повторений</comment>
        <translation>в понедельник</translation>
    </message>
    <message>
        <source>on Tuesday</source>
        <comment>следующая дата повторений</comment>
        <translation>во вторник</translation>
    </message>
    <message>
        <source>on Wednesday</source>
        <comment>следующая дата повторений</comment>
        <translation>в среду</translation>
    </message>
    <message>
        <source>on Thursday</source>
        <comment>следующая дата повторений</comment>
        <translation>в четверг</translation>
    </message>
    <message>
        <source>on Friday</source>
        <comment>следующая дата повторений</comment>
        <translation>в пятницу</translation>
    </message>
    <message>
        <source>on Saturday</source>
        <comment>следующая дата повторений</comment>
        <translation>в субботу</translation>
    </message>
    <message>
        <source>on Sunday</source>
        <comment>следующая дата повторений</comment>
        <translation>в воскресенье</translation>
    </message>
    <message numerus="yes">
        <source>Do every %n days</source>
        <translation>
            <numerusform>Повторять каждый %n день</numerusform>
            <numerusform>Повторять каждые %n дня</numerusform>
            <numerusform>Повторять каждые %n дней</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Do every %n weeks</source>
        <translation>
            <numerusform>Повторять каждую %n неделю</numerusform>
            <numerusform>Повторять каждые %n недели</numerusform>
            <numerusform>Повторять каждые %n недель</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Do every %n months</source>
        <translation>
            <numerusform>Повторять каждый %n месяц</numerusform>
            <numerusform>Повторять каждые %n месяца</numerusform>
            <numerusform>Повторять каждые %n месяцев</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 and %2</source>
        <translation>%1 и %2</translation>
    </message>
    <message>
        <source> on %1</source>
        <translation> по %1</translation>
    </message>
</context>
<context>
    <name>SearchField</name>
    <message>
        <source>Search</source>
        <translation>Поиск</translation>
    </message>
</context>
<context>
    <name>SearchPage</name>
    <message>
        <source>Search</source>
        <translation>Поиск</translation>
    </message>
    <message>
        <source>No items found</source>
        <translation>Ничего не найдено</translation>
    </message>
</context>
<context>
    <name>SearchSortFilterModel</name>
    <message>
        <source>No context</source>
        <translation>Без контекста</translation>
    </message>
    <message>
        <source>No folder</source>
        <translation>Без папки</translation>
    </message>
    <message>
        <source>Norvel Box</source>
        <translation>Norvel Box</translation>
    </message>
    <message>
        <source>One Step Actions</source>
        <translation>Одношаговые действия</translation>
    </message>
</context>
<context>
    <name>SettingsPage</name>
    <message>
        <source>Settings</source>
        <translation>Настройки</translation>
    </message>
    <message>
        <source>Your account and sync, the theme and the language, the daily plan and the reminders.</source>
        <translation>Учётная запись и синхронизация, тема и язык, план на день и напоминания.</translation>
    </message>
</context>
<context>
    <name>SidePanel</name>
    <message>
        <source>Norvel Box</source>
        <translation>Norvel Box</translation>
    </message>
    <message>
        <source>Daily Plan</source>
        <translation>План на день</translation>
    </message>
    <message>
        <source>Projects</source>
        <translation>Проекты</translation>
    </message>
    <message>
        <source>Contexts</source>
        <translation>Контексты</translation>
    </message>
    <message>
        <source>Favorites</source>
        <translation>Избранное</translation>
    </message>
    <message>
        <source>Method</source>
        <translation>Методика</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Настройки</translation>
    </message>
</context>
<context>
    <name>SortingPopup</name>
    <message>
        <source>Sort The List</source>
        <translation>Сортировка списка</translation>
    </message>
    <message>
        <source>Alphabetically</source>
        <translation>По алфавиту</translation>
    </message>
    <message>
        <source>By modify date (older first)</source>
        <translation>По дате изменения (сначала старые)</translation>
    </message>
    <message>
        <source>By modify date (newest first)</source>
        <translation>По дате изменения (сначала новые)</translation>
    </message>
    <message>
        <source>Manual</source>
        <translation>Вручную</translation>
    </message>
    <message>
        <source>Sort by default</source>
        <translation>Сортировать по умолчанию</translation>
    </message>
    <message>
        <source>Group by due date (if applicable)</source>
        <translation>Группировать по сроку (если возможно)</translation>
    </message>
</context>
<context>
    <name>SystemTray</name>
    <message>
        <source>Hide Norvel</source>
        <translation>Скрыть Norvel</translation>
    </message>
    <message>
        <source>Show Norvel</source>
        <translation>Показать Norvel</translation>
    </message>
    <message>
        <source>Quit Norvel</source>
        <translation>Выйти из Norvel</translation>
    </message>
</context>
<context>
    <name>TaskInfoContent</name>
    <message>
        <source>When task is active</source>
        <translation>Когда задача начнётся</translation>
    </message>
    <message>
        <source>When task is overdue</source>
        <translation>Когда задача просрочена</translation>
    </message>
    <message>
        <source>5 min before %1</source>
        <translation>За 5 минут до %1</translation>
    </message>
    <message>
        <source>15 min before %1</source>
        <translation>За 15 минут до %1</translation>
    </message>
    <message>
        <source>30 min before %1</source>
        <translation>За 30 минут до %1</translation>
    </message>
    <message>
        <source>1 hour before %1</source>
        <translation>За 1 час до %1</translation>
    </message>
    <message>
        <source>2 hours before %1</source>
        <translation>За 2 часа до %1</translation>
    </message>
    <message>
        <source>3 hours before %1</source>
        <translation>За 3 часа до %1</translation>
    </message>
    <message>
        <source>1 day before %1</source>
        <translation>За 1 день до %1</translation>
    </message>
    <message>
        <source>2 days before %1</source>
        <translation>За 2 дня до %1</translation>
    </message>
    <message>
        <source>start</source>
        <translation>начала</translation>
    </message>
    <message>
        <source>deadline</source>
        <translation>срока</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Основное</translation>
    </message>
    <message>
        <source>Metadata</source>
        <translation>Метаданные</translation>
    </message>
    <message>
        <source>Reminders</source>
        <translation>Напоминания</translation>
    </message>
    <message>
        <source>Memo</source>
        <translation>Заметка</translation>
    </message>
    <message>
        <source>Task name</source>
        <translation>Название задачи</translation>
    </message>
    <message>
        <source>Enter task name</source>
        <translation>Введите название задачи</translation>
    </message>
    <message>
        <source>Task status</source>
        <translation>Статус задачи</translation>
    </message>
    <message>
        <source>Active</source>
        <translation>Активна</translation>
    </message>
    <message>
        <source>Complete</source>
        <translation>Выполнена</translation>
    </message>
    <message>
        <source>Project</source>
        <translation>Проект</translation>
    </message>
    <message>
        <source>Context</source>
        <translation>Контекст</translation>
    </message>
    <message>
        <source>Remove from Favorites</source>
        <translation>Убрать из избранного</translation>
    </message>
    <message>
        <source>Add to Favorites</source>
        <translation>Добавить в избранное</translation>
    </message>
    <message>
        <source>Remind before start</source>
        <translation>Напомнить до начала</translation>
    </message>
    <message>
        <source>Remind before deadline</source>
        <translation>Напомнить до срока</translation>
    </message>
    <message>
        <source>Task has already started or overdue.
Please adjust its dates to add a reminder</source>
        <translation>Задача уже началась или просрочена.
Измените её даты, чтобы добавить напоминание</translation>
    </message>
    <message>
        <source>To add a reminder for this task please add
a start or due date first</source>
        <translation>Чтобы добавить напоминание,
сначала укажите дату начала или срок</translation>
    </message>
    <message>
        <source>Setup dates</source>
        <translation>Указать даты</translation>
    </message>
    <message>
        <source>Optional memo</source>
        <translation>Заметка (необязательно)</translation>
    </message>
    <message>
        <source>Enter memo</source>
        <translation>Введите заметку</translation>
    </message>
    <message>
        <source>No context</source>
        <translation>Без контекста</translation>
    </message>
</context>
<context>
    <name>TaskInfoPopup</name>
    <message>
        <source>Save Error</source>
        <translation>Ошибка сохранения</translation>
    </message>
    <message>
        <source>Please input task name</source>
        <translation>Пожалуйста, введите название задачи</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Изменить</translation>
    </message>
    <message>
        <source>New task</source>
        <translation>Новая задача</translation>
    </message>
</context>
<context>
    <name>TaskListDelegate</name>
    <message>
        <source>Input task name</source>
        <translation>Введите название задачи</translation>
    </message>
    <message>
        <source>Input memo text</source>
        <translation>Введите текст заметки</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>Восстановить</translation>
    </message>
    <message numerus="yes">
        <source>%n day(s)</source>
        <translation>
            <numerusform>%n день</numerusform>
            <numerusform>%n дня</numerusform>
            <numerusform>%n дней</numerusform>
        </translation>
    </message>
    <message>
        <source>Mark as not complete</source>
        <translation>Отметить как невыполненную</translation>
    </message>
    <message>
        <source>Mark as completed</source>
        <translation>Отметить как выполненную</translation>
    </message>
    <message>
        <source>Remove from Favorites</source>
        <translation>Убрать из избранного</translation>
    </message>
    <message>
        <source>Add to Favorites</source>
        <translation>Добавить в избранное</translation>
    </message>
    <message>
        <source>Go to this project</source>
        <translation>Перейти к проекту</translation>
    </message>
    <message>
        <source>Go to this context</source>
        <translation>Перейти к контексту</translation>
    </message>
    <message>
        <source>Edit Task</source>
        <translation>Изменить задачу</translation>
    </message>
    <message>
        <source>Delete selected items</source>
        <translation>Удалить выбранные</translation>
    </message>
    <message>
        <source>Delete Task</source>
        <translation>Удалить задачу</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Вырезать</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Копировать</translation>
    </message>
</context>
<context>
    <name>TaskListPage</name>
    <message numerus="yes">
        <source>%n task(s)</source>
        <translation>
            <numerusform>%n задача</numerusform>
            <numerusform>%n задачи</numerusform>
            <numerusform>%n задач</numerusform>
        </translation>
    </message>
    <message>
        <source>Completed</source>
        <translation>Выполненные</translation>
    </message>
    <message>
        <source>Add Task</source>
        <translation>Добавить задачу</translation>
    </message>
    <message>
        <source>Add Project</source>
        <translation>Добавить проект</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Вставить</translation>
    </message>
</context>
<context>
    <name>TaskPreviewPopup</name>
    <message>
        <source>Enter memo</source>
        <translation>Введите заметку</translation>
    </message>
    <message>
        <source>Reminders</source>
        <translation>Напоминания</translation>
    </message>
    <message>
        <source>Task Dates</source>
        <translation>Сроки задачи</translation>
    </message>
    <message>
        <source>Project</source>
        <translation>Проект</translation>
    </message>
    <message>
        <source>Context</source>
        <translation>Контекст</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Изменить</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Удалить</translation>
    </message>
    <message>
        <source>Remove from Favorites</source>
        <translation>Убрать из избранного</translation>
    </message>
    <message>
        <source>Add to Favorites</source>
        <translation>Добавить в избранное</translation>
    </message>
    <message>
        <source>Move to other project</source>
        <translation>Переместить в другой проект</translation>
    </message>
</context>
<context>
    <name>TaskRepetitionFragment</name>
    <message>
        <source>Warning</source>
        <translation>Внимание</translation>
    </message>
    <message>
        <source>Unfortunately with monthly repeating tasks it&apos;s impossible to set due date to 29, 30 and 31.</source>
        <translation>К сожалению, для задач, повторяющихся ежемесячно, нельзя выбрать 29, 30 и 31 число.</translation>
    </message>
    <message>
        <source>Repetition settings</source>
        <translation>Настройки повторения</translation>
    </message>
    <message>
        <source>Create a repetition</source>
        <translation>Создать повторение</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Нет</translation>
    </message>
    <message>
        <source>Day</source>
        <translation>День</translation>
    </message>
    <message>
        <source>Week</source>
        <translation>Неделя</translation>
    </message>
    <message>
        <source>Month</source>
        <translation>Месяц</translation>
    </message>
    <message numerus="yes">
        <source>Every %n day(s)</source>
        <translation>
            <numerusform>Каждый %n день</numerusform>
            <numerusform>Каждые %n дня</numerusform>
            <numerusform>Каждые %n дней</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Every %n week(s)</source>
        <translation>
            <numerusform>Каждую %n неделю</numerusform>
            <numerusform>Каждые %n недели</numerusform>
            <numerusform>Каждые %n недель</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Every %n month(s)</source>
        <translation>
            <numerusform>Каждый %n месяц</numerusform>
            <numerusform>Каждые %n месяца</numerusform>
            <numerusform>Каждые %n месяцев</numerusform>
        </translation>
    </message>
    <message>
        <source>Mon</source>
        <translation>Пн</translation>
    </message>
    <message>
        <source>Tue</source>
        <translation>Вт</translation>
    </message>
    <message>
        <source>Wed</source>
        <translation>Ср</translation>
    </message>
    <message>
        <source>Thu</source>
        <translation>Чт</translation>
    </message>
    <message>
        <source>Fri</source>
        <translation>Пт</translation>
    </message>
    <message>
        <source>Sat</source>
        <translation>Сб</translation>
    </message>
    <message>
        <source>Sun</source>
        <translation>Вс</translation>
    </message>
    <message>
        <source>Next start date: %1</source>
        <translation>Следующее начало: %1</translation>
    </message>
    <message>
        <source>Next due date: %1</source>
        <translation>Следующий срок: %1</translation>
    </message>
</context>
<context>
    <name>TrashPage</name>
    <message>
        <source>Trash</source>
        <translation>Корзина</translation>
    </message>
    <message>
        <source>Tasks</source>
        <translation>Задачи</translation>
    </message>
    <message>
        <source>Projects</source>
        <translation>Проекты</translation>
    </message>
    <message>
        <source>Folders</source>
        <translation>Папки</translation>
    </message>
    <message>
        <source>Contexts</source>
        <translation>Контексты</translation>
    </message>
    <message>
        <source>Empty Trash</source>
        <translation>Очистить корзину</translation>
    </message>
    <message>
        <source>Are you sure you want to delete everything for good?</source>
        <translation>Удалить всё безвозвратно?</translation>
    </message>
    <message>
        <source>Delete all</source>
        <translation>Удалить всё</translation>
    </message>
    <message>
        <source>You can restore tasks, projects, folders and contexts within 14 days after deletion date</source>
        <translation>Задачи, проекты, папки и контексты можно восстановить в течение 14 дней после удаления</translation>
    </message>
    <message>
        <source>The trash is empty</source>
        <translation>Корзина пуста</translation>
    </message>
    <message>
        <source>Completed</source>
        <translation>Выполненные</translation>
    </message>
</context>
<context>
    <name>TreeViewPage</name>
    <message>
        <source>Add</source>
        <translation>Добавить</translation>
    </message>
</context>
<context>
    <name>TreeViewPopup</name>
    <message>
        <source>Search</source>
        <translation>Поиск</translation>
    </message>
    <message>
        <source>Nothing found</source>
        <translation>Ничего не найдено</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Database Error</source>
        <translation>Ошибка базы данных</translation>
    </message>
    <message>
        <source>Unable to deploy database. Please contact the application&apos;s support team for more information. The application will be closed.</source>
        <translation>Не удалось развернуть базу данных. Пожалуйста, обратитесь в службу поддержки приложения. Приложение будет закрыто.</translation>
    </message>
    <message>
        <source>Please note that the app is still running in the background. In order to close it please use the icon in the system tray.</source>
        <translation>Обратите внимание: приложение продолжает работать в фоне. Чтобы закрыть его, воспользуйтесь значком в системном лотке.</translation>
    </message>
    <message>
        <source>Network error</source>
        <translation>Ошибка сети</translation>
    </message>
    <message>
        <source>The server could not be reached. Make sure the internet connection is working and try again.</source>
        <translation>Не удалось связаться с сервером. Проверьте подключение к интернету и попробуйте ещё раз.</translation>
    </message>
    <message>
        <source>Sync error</source>
        <translation>Ошибка синхронизации</translation>
    </message>
    <message>
        <source>It seems like you changed your password on another device. Please login to your account with the new password.</source>
        <translation>Похоже, вы сменили пароль на другом устройстве. Войдите в учётную запись с новым паролем.</translation>
    </message>
</context>
</TS>
