// The same window by GTK 4.
#include <gtk/gtk.h>

static void Activate(GtkApplication* application, gpointer data)
{
    GtkWidget* window = gtk_application_window_new(application);
    GtkWidget* fixed = gtk_fixed_new();
    (void)data;
    gtk_window_set_title(GTK_WINDOW(window), "Start");
    gtk_window_set_default_size(GTK_WINDOW(window), 300, 120);
    gtk_fixed_put(GTK_FIXED(fixed), gtk_label_new("Hello, world."), 20, 20);
    gtk_fixed_put(GTK_FIXED(fixed), gtk_button_new_with_label("OK"), 210, 70);
    gtk_window_set_child(GTK_WINDOW(window), fixed);
    gtk_window_present(GTK_WINDOW(window));
}

int main(int argc, char** argv)
{
    GtkApplication* application = gtk_application_new("org.example.start", G_APPLICATION_NON_UNIQUE);
    g_signal_connect(application, "activate", G_CALLBACK(Activate), NULL);
    return g_application_run(G_APPLICATION(application), argc, argv);
}
